#!/usr/bin/env python3
"""Follows a guide, in an empty folder.

    guide_test.py --qorcli PATH (--example DIR | --examples DIR) [--rewrite] GUIDE

The blocks of the guide are followed one by one:

```LANGUAGE FILE   With --examples: the file is written, in place of an earlier one
                  of that name. In the end, each folder that was written to holds
                  the same files as the example of its name in DIR.
                  With --example: the folder is a copy of DIR, whose file must
                  have these lines as they stand there.
```console        The commands print what stands behind them (run_document.py).
```terminal KEYS  The screen is what is seen once the keys have been typed
                  (run_session.py). Instead of keys, "$ COMMAND" starts a program
                  at a terminal, which must have succeeded by the end of the guide.
"""
import argparse
import difflib
import os
import pathlib
import shutil
import sys
import tempfile
import types

sys.dont_write_bytecode = True  # the source folder stays as it is
import run_document  # noqa: E402
import run_session  # noqa: E402


class Reader:
    """Somebody who does what the guide says."""

    def __init__(self, arguments, work, programs):
        self.arguments, self.work, self.programs = arguments, work, str(programs)
        self.terminal, self.followed, self.failures = None, set(), []
        self.written = {}  # by name

    def follow(self, lines):
        """Returns the lines of the guide as they are now."""
        result, place = [], 0
        while place < len(lines):
            if not lines[place].startswith("```"):
                result.append(lines[place])
                place += 1
                continue
            end = lines.index("```", place + 1) + 1
            result += self.follow_block(lines[place:end])
            place = end
        return result

    def follow_block(self, block):
        kind, _, what = block[0].partition(" ")
        self.followed.add(kind)
        if kind == "```console":
            return run_document.replayed(block, lambda command: run_document.run(
                command, self.work, self.programs))[0]
        if kind == "```terminal":
            return [block[0], *self.screen(what, block[1:-1]), block[-1]]
        if what:
            self.take_file(what, "\n".join(block[1:-1]) + "\n")
        return block

    def screen(self, keys, expected):
        if keys.startswith("$ "):
            self.start(keys[2:])
            keys = ""
        return run_session.shown(self.terminal, keys, expected,
                                 self.arguments.rewrite)

    def start(self, command):
        self.end_session()
        path = self.programs + os.pathsep + os.environ["PATH"]
        self.terminal = run_session.terminal_for(
            command, self.work, PATH=path, HOME=str(self.work.parent),
            XDG_STATE_HOME=str(self.work.parent))

    def end_session(self):
        if self.terminal is None:
            return
        if self.terminal.wait_for_exit() != 0:
            self.failures.append("the program at the terminal fails, or does not end")
        self.terminal.close()
        self.terminal = None

    def take_file(self, name, text):
        path = self.work / name
        if self.arguments.examples is None:
            if text not in path.read_text():
                self.failures.append(f"{name} has no such part:\n{text}")
            return
        path.parent.mkdir(exist_ok=True)
        path.write_text(text)
        self.written[name] = text

    def compare_with_examples(self):
        for folder in {pathlib.Path(name).parts[0] for name in self.written}:
            example = self.arguments.examples / folder
            expected = {f"{folder}/{path.name}": path.read_text()
                        for path in example.iterdir() if path.is_file()}
            shown = {name: text for name, text in self.written.items()
                     if name.startswith(folder + "/")}
            self.failures += [
                f"{name} is not the same in the guide and in {example.parent}"
                for name in sorted({*shown, *expected})
                if shown.get(name) != expected.get(name)]


def main():
    parser = argparse.ArgumentParser(
        description=__doc__,
        formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--qorcli", type=pathlib.Path, required=True)
    of = parser.add_mutually_exclusive_group(required=True)
    of.add_argument("--example", type=pathlib.Path)
    of.add_argument("--examples", type=pathlib.Path)
    parser.add_argument("--rewrite", action="store_true")
    parser.add_argument("guide", type=pathlib.Path)
    arguments = parser.parse_args()
    lines = arguments.guide.read_text().splitlines()
    with tempfile.TemporaryDirectory() as folder:
        programs, work = pathlib.Path(folder, "bin"), pathlib.Path(folder, "work")
        programs.mkdir()
        (programs / "qorcli").symlink_to(arguments.qorcli.resolve())
        if arguments.example is None:
            work.mkdir()
        else:
            shutil.copytree(arguments.example, work)
        reader = Reader(arguments, work, programs)
        try:
            now = reader.follow(lines)
        finally:
            reader.end_session()
    reader.compare_with_examples()
    if arguments.rewrite:
        arguments.guide.write_text("\n".join(now) + "\n")
    else:
        reader.failures += difflib.unified_diff(lines, now, "written", "seen",
                                                lineterm="")
    if "```console" not in reader.followed:
        reader.failures.append("no command in the guide")
    print(f"{arguments.guide}: {len(reader.written)} files written")
    sys.exit("\n".join(reader.failures) or 0)


if __name__ == "__main__":
    main()
