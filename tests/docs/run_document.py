#!/usr/bin/env python3
"""Runs the commands in a document and compares what they print.

    run_document.py --qorcli PATH --root DIR [--rewrite] DOCUMENT...

A command is a line that begins with "$ " in a block fenced as "console"; the
lines up to the next command or the end of the block are what it must print on
standard output. Commands run in the repository's root with bash. `script/run`
builds before it starts the engine; here it stands for the engine under test.
"""
import argparse
import os
import pathlib
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


def replayed(lines, execute):
    """Returns the lines of a document with the output its commands have now."""
    result, inside, commands = [], False, 0
    for line in lines:
        if line.startswith("```"):
            inside = not inside and line == "```console"
        elif inside and line.startswith("$ "):
            result.append(line)
            result += execute(line[2:])
            commands += 1
            continue
        elif inside:
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
    parser.add_argument("--root", type=pathlib.Path, required=True)
    parser.add_argument("--rewrite", action="store_true")
    parser.add_argument("documents", nargs="+", type=pathlib.Path)
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        (pathlib.Path(folder) / "qorcli").symlink_to(arguments.qorcli.resolve())
        results = [check(document, arguments, folder)
                   for document in arguments.documents]
    sys.exit(0 if all(results) else 1)


if __name__ == "__main__":
    main()
