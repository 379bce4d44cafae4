#!/usr/bin/env python3
"""Compares the engine with golden transcripts.

A transcript is a text file of cases. A case begins with "=== " and what it
shows; its sections begin with "--- " and their name.

*.batch      command (for the shell, in a folder with the files below), stdin,
             stdout, stderr, status.
*.terminal   size (columns x rows), command (for the shell), environment
             (NAME=VALUE lines), then in turn keys (what is typed) and screen
             (what must then be seen, with the cursor's row and column, the
             number of bells since the keys before, and whether the terminal
             hands on lines or keys in its heading), and exit (the status). A
             key that has no character of its own is written as <Tab>; line ends
             between keys are not typed.

In both, $PLUGINS stands for the folder of the plug-ins made for the tests and
$FILTER for the plug-in under test; qorcli is the engine under test, and
peak-memory runs it and prints how much memory it took, in KiB. A line
"\\ no line feed" at the end of a section takes back its last line feed.

--rewrite writes what happened into the transcripts. What has been rewritten has
to be read before it is believed.
"""

import argparse
import difflib
import fcntl
import os
import pathlib
import re
import select
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import termios
import time

sys.dont_write_bytecode = True  # the source folder stays as it is
from screen import Screen  # noqa: E402

# For what takes milliseconds on an idle machine. Valgrind and emulators are slower.
SLOWNESS = 5 if "QOR_TEST_SLOW" in os.environ else 1
LIMIT = 12 * SLOWNESS  # seconds
# Some batch cases send megabytes through several pipelines; each takes seconds.
BATCH_LIMIT = 60 * SLOWNESS  # seconds
SETTLED = 1.0  # seconds without output, when rewriting
NO_LINE_FEED = "\\ no line feed\n"
CHUNK = 128 * 1024  # bytes

KEYS = {
    "Tab": "\t", "Enter": "\r", "Space": " ", "lt": "<", "Backspace": "\x7f",
    "Left": "\033[D", "Right": "\033[C", "Up": "\033[A", "Down": "\033[B",
    "Paste": "\033[200~", "EndPaste": "\033[201~", "LineFeed": "\n",
    "Esc": "\033", "CSI": "\u009b",
}


# Runs the engine with its arguments and prints its memory's peak in KiB. An
# address sanitizer is kept from collecting freed memory, which looks the same.
PEAK_MEMORY = """#!{python}
import os, resource, subprocess, sys
options = os.environ.get("ASAN_OPTIONS", "") + ":quarantine_size_mb=1"
subprocess.run(["qorcli"] + sys.argv[1:], check=True, stdout=subprocess.DEVNULL,
               env=dict(os.environ, ASAN_OPTIONS=options))
print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)
"""


class Mismatch(Exception):
    pass


def make_files(folder):
    """The files that commands in transcripts work on."""
    def write(name, data):
        (folder / name).write_bytes(data)

    write("fruits.txt", b"Apple\nbanana\nCherry\ndate\nelderberry\nfig\ngrape\n")
    write("unfinished.txt", b"first\nlast without a line feed")
    write("nul.txt", b"one\0two\nthree\n")
    write("empty.txt", b"")
    write("two words.txt", b"blank in the name\n")
    write("not_a_library.so", b"This is a text.\n")
    # Lines of 64 bytes, several chunks of them: every chunk ends with a line.
    write("even.txt", b"".join(b"%063d\n" % n for n in range(5 * CHUNK // 64)))
    # Lines of 61 bytes: no chunk but the last ends with what fits in it.
    write("odd.txt", b"".join(b"%060d\n" % n for n in range(3 * CHUNK // 61)))
    # One line longer than two chunks between short ones.
    write("long.txt", b"before\n" + b"x" * (2 * CHUNK + 17) + b"\nafter\n")
    write("numbers.txt", b"".join(b"%d\n" % n for n in range(1, 201)))
    (folder / "folder").mkdir()
    write("folder/inside.txt", b"inside\n")


class Section:
    def __init__(self, name, heading="", text=""):
        self.name, self.heading, self.text = name, heading, text

    def value(self):
        if self.text.endswith(NO_LINE_FEED):
            return self.text[: -len(NO_LINE_FEED) - 1]
        return self.text

    def set(self, value):
        ends = value == "" or value.endswith("\n")
        self.text = value if ends else value + "\n" + NO_LINE_FEED

    def __str__(self):
        return f"--- {self.name}{self.heading}\n{self.text}"


class Case:
    def __init__(self, title):
        self.title, self.sections = title, []

    def get(self, name, default=""):
        for section in self.sections:
            if section.name == name:
                return section.value()
        return default

    def set(self, name, value):
        for section in self.sections:
            if section.name == name:
                section.set(value)
                return
        self.sections.append(Section(name))
        self.sections[-1].set(value)

    def end(self):
        """Takes the blank line between two cases away from the last section."""
        last = self.sections[-1]
        if last.text.endswith("\n\n"):
            last.text = last.text[:-1]

    def __str__(self):
        return f"=== {self.title}\n" + "".join(map(str, self.sections))


def parse(path):
    preamble, cases = "", []
    for line in path.read_text(encoding="utf-8").splitlines(keepends=True):
        if line.startswith("=== "):
            if cases:
                cases[-1].end()
            cases.append(Case(line[4:].rstrip("\n")))
        elif line.startswith("--- "):
            name, _, heading = line[4:].rstrip("\n").partition(" ")
            cases[-1].sections.append(Section(name, " " + heading if heading else ""))
        elif cases:
            cases[-1].sections[-1].text += line
        else:
            preamble += line
    if cases:
        cases[-1].end()
    else:
        raise SystemExit(f"{path}: no case in it")
    return preamble, cases


def difference(name, expected, found):
    return "".join(difflib.unified_diff(
        expected.splitlines(keepends=True), found.splitlines(keepends=True),
        f"{name}, expected", f"{name}, found"))


class World:
    """Where a case runs: a fresh folder, and an environment that says no more
    than it must."""

    def __init__(self, arguments):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="transcript-"))
        self.names = {
            str(self.folder): "$FOLDER",
            str(arguments.plugins): "$PLUGINS",
            str(arguments.plugin): "$FILTER",
        }
        work = self.folder / "files"
        work.mkdir()
        make_files(work)
        self.work = work
        kept = ("PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS",
                "LD_LIBRARY_PATH", "LLVM_PROFILE_FILE")
        self.environment = {k: os.environ[k] for k in kept if k in os.environ}
        programs = self.folder / "bin"
        programs.mkdir()
        # A script and not a link: the engine looks beside its own file.
        program = programs / "qorcli"
        program.write_text(f'#!/bin/sh\nexec "{arguments.qorcli}" "$@"\n')
        program.chmod(0o755)
        meter = programs / "peak-memory"
        meter.write_text(PEAK_MEMORY.format(python=sys.executable))
        meter.chmod(0o755)
        self.environment.update(
            PATH=f"{programs}:{self.environment['PATH']}", HOME=str(self.folder),
            XDG_STATE_HOME=str(self.folder / "state"), LC_ALL="C.UTF-8",
            USER="operator", TERM="xterm", PLUGINS=str(arguments.plugins),
            FILTER=str(arguments.plugin))

    def cleaned(self, text):
        for path, name in self.names.items():
            text = text.replace(path, name)
        return text

    def remove(self):
        shutil.rmtree(self.folder)


def run_batch(case, world, rewrite):
    process = subprocess.run(
        ["sh", "-c", case.get("command")], cwd=world.work, env=world.environment,
        input=case.get("stdin").encode(), capture_output=True,
        timeout=BATCH_LIMIT,
        check=False)
    found = {
        "stdout": world.cleaned(process.stdout.decode("utf-8", "backslashreplace")),
        "stderr": world.cleaned(process.stderr.decode("utf-8", "backslashreplace")),
        "status": f"{process.returncode}\n",
    }
    if rewrite:
        for name, value in found.items():
            case.set(name, value)
        return
    wrong = [difference(name, case.get(name), value)
             for name, value in found.items() if case.get(name) != value]
    if wrong:
        raise Mismatch("".join(wrong))


def keys_to_bytes(text):
    def key(match):
        name = match.group(1)
        if name.startswith("Ctrl-"):
            return chr(ord(name[5].upper()) & 0x1F)
        return KEYS[name]

    return re.sub("<([A-Za-z_-]+)>", key, text.replace("\n", "")).encode()


class Terminal:
    """A program at a pseudo-terminal, and what is seen on its screen."""

    def __init__(self, command, world, environment, columns, rows):
        self.screen = Screen(columns, rows)
        self.master, slave = os.openpty()
        size = struct.pack("HHHH", rows, columns, 0, 0)
        fcntl.ioctl(slave, termios.TIOCSWINSZ, size)
        # Kept open, so that the terminal can be looked at when the program is
        # gone.
        self.slave = slave
        self.attributes = termios.tcgetattr(slave)
        self.process = subprocess.Popen(
            ["sh", "-c", "exec " + command], cwd=world.work,
            env=dict(world.environment, **environment), stdin=slave, stdout=slave,
            stderr=slave, start_new_session=True,
            preexec_fn=lambda: fcntl.ioctl(0, termios.TIOCSCTTY, 0))

    def type(self, data):
        self.screen.bells = 0
        os.write(self.master, data)

    def state(self):
        """The heading and the text of a screen section."""
        screen = self.screen
        by_line = termios.tcgetattr(self.slave)[3] & termios.ICANON
        heading = (f" cursor={screen.row + 1},{screen.column + 1} bells={screen.bells}"
                   f" input={'lines' if by_line else 'keys'}")
        return heading, screen.text()

    def read(self, seconds):
        """Reads on for a while; returns whether anything came."""
        ready, _, _ = select.select([self.master], [], [], seconds)
        if not ready:
            return False
        self.screen.feed(os.read(self.master, 65536))
        return True

    def wait_for(self, expected):
        deadline = time.monotonic() + LIMIT
        while self.state() != expected and time.monotonic() < deadline:
            self.read(0.1)
        return self.state() == expected

    def settle(self):
        while self.read(SETTLED):
            pass

    def wait_for_exit(self):
        deadline = time.monotonic() + LIMIT
        while self.process.poll() is None and time.monotonic() < deadline:
            self.read(0.05)
        while self.read(0):
            pass
        return self.process.poll()

    def is_as_it_was(self):
        paste_mode = 2004 in self.screen.modes
        return termios.tcgetattr(self.slave) == self.attributes and not paste_mode

    def close(self):
        if self.process.poll() is None:
            os.killpg(self.process.pid, signal.SIGKILL)
            self.process.wait()
        os.close(self.slave)
        os.close(self.master)


def check_screen(section, terminal, world, rewrite):
    expected = section.heading, section.value()
    if rewrite:
        terminal.settle()
        section.heading, text = terminal.state()
        section.set(text)
    elif not terminal.wait_for(expected):
        heading, text = terminal.state()
        raise Mismatch(difference("screen", "".join(expected[0]) + "\n" + expected[1],
                                  heading + "\n" + text))


def check_exit(section, terminal, rewrite):
    status = terminal.wait_for_exit()
    if status is None:
        raise Mismatch("the program does not end\n" + terminal.screen.text())
    if not terminal.is_as_it_was():
        raise Mismatch("the terminal is not left as it was\n")
    found = f"{status}\n"
    if rewrite:
        section.set(found)
    elif section.value() != found:
        raise Mismatch(difference("exit", section.value(), found))


def run_terminal(case, world, rewrite):
    columns, rows = map(int, case.get("size").split("x"))
    environment = dict(line.split("=", 1) for line in case.get("environment").splitlines())
    terminal = Terminal(case.get("command"), world, environment, columns, rows)
    try:
        for section in case.sections:
            if section.name == "keys":
                terminal.type(keys_to_bytes(section.value()))
            elif section.name == "screen":
                check_screen(section, terminal, world, rewrite)
            elif section.name == "exit":
                check_exit(section, terminal, rewrite)
        if case.sections[-1].name != "exit":
            raise Mismatch("the last section must be exit\n")
    finally:
        terminal.close()


def run_file(path, arguments):
    run = {".batch": run_batch, ".terminal": run_terminal}[path.suffix]
    preamble, cases = parse(path)
    failures = 0
    for case in cases:
        world = World(arguments)
        try:
            run(case, world, arguments.rewrite)
        except (Mismatch, subprocess.TimeoutExpired, ValueError) as problem:
            failures += 1
            print(f"{path.name}: {case.title}\n{problem}")
        finally:
            world.remove()
    if arguments.rewrite:
        path.write_text(preamble + "\n".join(map(str, cases)), encoding="utf-8")
    print(f"{path.name}: {len(cases)} cases, {failures} failed")
    return failures


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--qorcli", type=pathlib.Path, required=True)
    parser.add_argument("--plugin", type=pathlib.Path, required=True)
    parser.add_argument("--plugins", type=pathlib.Path, required=True)
    parser.add_argument("--rewrite", action="store_true")
    parser.add_argument("transcript", type=pathlib.Path, nargs="+")
    arguments = parser.parse_args()
    sys.exit(1 if sum(run_file(path, arguments) for path in arguments.transcript) else 0)


if __name__ == "__main__":
    main()
