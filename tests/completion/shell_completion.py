#!/usr/bin/env python3
"""Types command lines in a shell at a pseudo-terminal, with Tab, and compares
what the shell makes of them.

    shell_completion.py --qorcli PATH --root DIR --plugin PATH SHELL

SHELL is bash or zsh. It knows a function qorcli, which hands completion on to the
engine and otherwise prints its arguments. A case is what is typed, with a tab
where that key is pressed, and what the function must print.
"""
import argparse
import os
import pathlib
import pty
import re
import select
import subprocess
import sys
import tempfile
import time

LIMIT = 12  # seconds, for what takes milliseconds on an idle machine
QUIET = 0.2  # seconds without output
PROMPT = "ready> "

FUNCTION = """
PS1='$PROMPT'
PATH=$FOLDER:$PATH
qorcli() {
  case " $* " in
    *" --complete "*) command qorcli "$@" ;;
    *) printf '[%s]' "$@"; printf '\\n' ;;
  esac
}
"""
SETUP = {
    "bash": ("source $SCRIPTS/qorcli.bash\n",
             ["bash", "--noprofile", "--rcfile", "{rc}", "-i"]),
    "zsh": ("fpath=($SCRIPTS $fpath)\nautoload -Uz compinit\ncompinit -u -D\n", ["zsh", "-i"]),
}

CASES = [
    # Each word of a line, in a quote that stays open.
    ("-c 's\tf\tex\td\t| fi\t--ig\tx'",
     "[-c][show file examples/device.log | filter --ignore x]"),
    ('-c "echo \\"a b\\" | fi\t-i x"', '[-c][echo "a b" | filter -i x]'),
    # Outside quotes, one is opened.
    ("-c sh\ttr\t'", "[-c][show tree ]"),
    # A finished word gets its blank.
    ("-c 'show\tf\tx'", "[-c][show file x]"),
    # Words agree up to here.
    ("-c 'echo x | filter --i\tg\tx'", "[-c][echo x | filter --ignore x]"),
    # A pattern may stand here, so that no option is begun.
    ("-c 'echo x | filter \tx'", "[-c][echo x | filter x]"),
    # The plug-in that is named is the one that is asked, by its file's name.
    ("--plugin $ODD -c 'echo x | count-l\t'",
     "[--plugin][$ODD][-c][echo x | count-lines ]"),
    ("--plugin tests/transcripts/plug\tx", "[--plugin][tests/transcripts/plugins/x]"),
    # Options, and the lines behind some of them.
    ("--no-p\tx", "[--no-pager][x]"),
    ("--tim\t", "[--timing]"),
    ("--help-line 'show f\t'", "[--help-line][show file ]"),
    # A name with a blank stands in quotes.
    ("-c 'show file $FOLDER/a\t| fi\tx'",
     '[-c][show file "$FOLDER/a name" | filter x]'),
    ("-c 'show file \"$FOLDER/a n\t| fi\tx'",
     '[-c][show file "$FOLDER/a name" | filter x]'),
    # Nothing fits.
    ("-c 'bogus x\ty'", "[-c][bogus xy]"),
]

# What bash's function offers: the words, which of them is being typed, and
# whether the key is Tab (9) or Tab for the second time, which lists (63).
OFFERED = [
    (["qorcli", "-c", "'show "], 2, 63,
     ["file  () Print a file", "tree  () Draw all commands as a tree"]),
    (["qorcli", "-c", "'show "], 2, 9, ["show file", "show tree"]),
    (["qorcli", "-c", "'echo "], 2, 9, []),
    (["qorcli", "-c", "'echo "], 2, 63, ["<text>  The text to print"]),
    # No help: neither is the rank.
    (["qorcli", "-c", "'echo x "], 2, 63, ["<text>  The text to print", "<cr>"]),
    (["qorcli", "-c", "'show f"], 2, 9, ["show file ", "show file  "]),
    (["qorcli", "-c", "show\\ f"], 2, 9, ["'show file "]),
    (["qorcli", "-c", '"echo \\"a\\" | f'], 2, 9,
     ['echo \\"a\\" | filter ', 'echo \\"a\\" | filter  ']),
    (["qorcli", "--t"], 1, 9, ["--trace", "--timing"]),
    (["qorcli", "--plugin", "=", "examples/"], 3, 9, []),
    (["qorcli", "--plugin", "=", "$ODD", "-c", "'x | shut"], 5, 9,
     ["x | shut-down ", "x | shut-down  "]),
    (["qorcli", "--mode", ""], 2, 9, []),
]


def offered(scripts, words, current, kind, environment):
    """Returns what bash's function offers."""
    process = subprocess.run(
        ["bash", "-c", f"source {scripts}/qorcli.bash; COMP_WORDS=(\"$@\"); "
         f"COMP_CWORD={current} COMP_TYPE={kind}; _qorcli; "
         "((${#COMPREPLY[@]})) && printf '%s\\n' \"${COMPREPLY[@]}\"", "bash",
         *words], env=environment, stdout=subprocess.PIPE, text=True, check=False)
    return process.stdout.splitlines()


class Shell:
    def __init__(self, command, environment, folder):
        self.pid, self.terminal = pty.fork()
        if self.pid == 0:
            os.chdir(folder)
            os.execvpe(command[0], command, environment)
        self.seen = ""

    def type(self, text):
        os.write(self.terminal, text.encode())

    def read(self, seconds):
        if not select.select([self.terminal], [], [], seconds)[0]:
            return False
        try:
            self.seen += os.read(self.terminal, 65536).decode(errors="replace")
        except OSError:  # the shell has ended
            return False
        return True

    def wait_for(self, pattern):
        deadline = time.monotonic() + LIMIT
        while time.monotonic() < deadline:
            found = re.search(pattern, self.seen)
            if found:
                return found
            self.read(0.1)
        return None

    def pause(self):
        """Waits until nothing comes any more. Keys that are typed before a word is
        completed wait for it, too, so that this need not be long."""
        while self.read(QUIET):
            pass

    def end(self):
        os.close(self.terminal)
        os.waitpid(self.pid, 0)


def typed(shell, line):
    """Types a line and returns what the function printed."""
    for part in re.split("(\t)", "qorcli " + line):
        shell.type(part)
        if part == "\t":
            shell.pause()
    shell.seen = ""
    shell.type("\r")
    found = shell.wait_for(r"(\[-.*\])\r+\n[^\n]*" + PROMPT)
    return found and found.group(1)


def check_typed(arguments, environment, folder):
    script, command = SETUP[arguments.shell]
    rc = pathlib.Path(folder) / ".zshrc"
    names = {"$FOLDER": folder, "$PROMPT": PROMPT,
             "$SCRIPTS": str(arguments.root / "engine/completion")}
    text = FUNCTION + script
    for name, value in names.items():
        text = text.replace(name, value)
    rc.write_text(text)
    shell = Shell([part.format(rc=rc) for part in command], environment,
                  arguments.root)
    shell.wait_for(PROMPT)
    failures = 0
    for line, expected in CASES:
        for name, value in (("$ODD", str(arguments.plugin)), ("$FOLDER", folder)):
            line, expected = line.replace(name, value), expected.replace(name, value)
        failures += differs(line, expected, typed(shell, line))
    shell.end()
    return failures


def check_offered(arguments, environment):
    failures = 0
    for words, current, kind, expected in OFFERED:
        words = [word.replace("$ODD", str(arguments.plugin)) for word in words]
        found = offered(arguments.root / "engine/completion", words, current, kind,
                        environment)
        failures += differs((words, kind), expected, found)
    return failures


def differs(case, expected, found):
    if found == expected:
        return False
    print(f"{case!r}\n  expected {expected}\n  found    {found}")
    return True


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--qorcli", type=pathlib.Path, required=True)
    parser.add_argument("--root", type=pathlib.Path, required=True)
    parser.add_argument("--plugin", type=pathlib.Path, required=True)
    parser.add_argument("shell", choices=SETUP)
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        (pathlib.Path(folder) / "a name").write_text("")
        (pathlib.Path(folder) / "qorcli").symlink_to(arguments.qorcli.resolve())
        environment = dict(os.environ, ZDOTDIR=folder, HOME=folder, TERM="dumb",
                           COLUMNS="500",
                           PATH=folder + os.pathsep + os.environ["PATH"])
        failures = check_typed(arguments, environment, folder)
        if arguments.shell == "bash":
            failures += check_offered(arguments, environment)
    print(f"{arguments.shell}: {failures} failed")
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
