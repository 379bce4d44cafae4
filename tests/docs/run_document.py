#!/usr/bin/env python3
"""Runs the commands in a document and compares what they print.

    run_document.py --qorcli PATH [--program PATH] --root DIR [--rewrite] DOCUMENT...

A command is a line that begins with "$ " in a block fenced as "console"; the
lines up to the next command or the end of the block are what it must print on
standard output. Commands run in the repository's root with bash. `script/run`
builds before it starts the engine; here it stands for the engine under test.
Other programs of the build that commands name are given with --program.

A block fenced as "drawing" shows which lines pipe commands keep. Its heading has
the pipe commands, with two blanks or more in between; the rows have the lines of
the text below "text" and, below each command, those it must print, with "--" in
the place of a dropped line for a separator between groups.
"""
import argparse
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile


def run(command, root, path):
    environment = dict(os.environ, PATH=path + os.pathsep + os.environ["PATH"])
    done = subprocess.run(
        ["bash", "-c", command.replace("script/run", "qorcli")],
        cwd=root, env=environment, stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE, timeout=60, check=False)
    return done.stdout.decode().splitlines()


def column(text, printed):
    """What was printed, each line beside the same line of the text."""
    cells, place, separated = [""] * len(text), -1, False
    for line in printed:
        if line == "   --":
            separated = True
            continue
        place = text.index(line, place + 1)
        cells[place] = line
        if separated:
            if cells[place - 1]:
                raise ValueError("a separator between adjacent lines")
            cells[place - 1], separated = "--", False
    return cells


def redrawn(block, execute):
    """Returns a drawing as it is now."""
    headings = list(re.finditer(r"\S+(?: \S+)*", block[0]))
    text = [row[:headings[1].start()].strip() for row in block[1:]]
    columns = [text]
    for heading in headings[1:]:
        printed = execute(f"printf '%s\\n' {shlex.join(text)} | "
                          f"script/run -c {shlex.quote(heading.group())}")
        columns.append(column(text, printed))
    rows = [block[0]]
    for cells in zip(*columns):
        row = ""
        for heading, cell in zip(headings, cells):
            row = row.ljust(heading.start()) + cell
        rows.append(row.rstrip())
    return rows


def replayed(lines, execute):
    """Returns the lines of a document with the output its commands have now."""
    result, kind, block, commands = [], None, [], 0
    for line in lines:
        if line.startswith("```"):
            if kind == "drawing":
                result += redrawn(block, execute)
                commands += 1
            kind, block = None if kind is not None else line[3:], []
        elif kind == "console" and line.startswith("$ "):
            result.append(line)
            result += execute(line[2:])
            commands += 1
            continue
        elif kind == "console":
            continue
        elif kind == "drawing":
            block.append(line)
            continue
        result.append(line)
    return result, commands


def check(document, arguments, path):
    lines = document.read_text().splitlines()
    now, commands = replayed(
        lines, lambda command: run(command, arguments.root, path))
    if commands == 0:
        print(f"{document}: no command in it")
        return False
    if now == lines:
        print(f"{document}: {commands} commands as written")
        return True
    if arguments.rewrite:
        document.write_text("\n".join(now) + "\n")
        return True
    import difflib
    for line in difflib.unified_diff(lines, now, "written", "printed",
                                     lineterm=""):
        print(line)
    return False


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--qorcli", type=pathlib.Path, required=True)
    parser.add_argument("--program", type=pathlib.Path, action="append",
                        default=[])
    parser.add_argument("--root", type=pathlib.Path, required=True)
    parser.add_argument("--rewrite", action="store_true")
    parser.add_argument("documents", nargs="+", type=pathlib.Path)
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        for program in [arguments.qorcli, *arguments.program]:
            (pathlib.Path(folder) / program.name).symlink_to(program.resolve())
        results = [check(document, arguments, folder)
                   for document in arguments.documents]
    sys.exit(0 if all(results) else 1)


if __name__ == "__main__":
    main()
