#!/usr/bin/env python3
"""Follows a guide, in an empty folder.

    guide_test.py --example DIR [--whole] --qorcli PATH GUIDE

A block fenced as ```LANGUAGE FILE shows a part of a file of the example DIR, and
must be that: its lines as they stand there. With --whole, the blocks of each file
make the whole file, but for empty lines between them, and every file of the
example is in the guide; the folder then receives what the guide shows, and
otherwise a copy of the example. The commands of the guide are run there, as those
of other documents are.
"""
import argparse
import pathlib
import re
import shutil
import sys
import tempfile

import run_document


def shown_files(guide):
    """Returns the blocks of each file that the guide shows parts of."""
    files = {}
    for name, text in re.findall(r"^```\w+ (\S+)\n(.*?)^```$", guide,
                                 re.MULTILINE | re.DOTALL):
        files.setdefault(name, []).append(text)
    return files


def without_empty_lines(text):
    return [line for line in text.splitlines() if line]


def differences(files, example, whole):
    for name, blocks in files.items():
        text = (example / name).read_text()
        for block in blocks:
            if block not in text:
                yield f"{name} has no such part:\n{block}"
        if whole and (without_empty_lines("".join(blocks)) !=
                      without_empty_lines(text)):
            yield f"the guide does not show the whole of {name}, in its order"
    names = {path.name for path in example.iterdir()}
    if whole and names != set(files):
        yield f"the guide shows {sorted(files)}, the example is {sorted(names)}"
    if not files:
        yield "the guide shows no part of the example"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--example", type=pathlib.Path, required=True)
    parser.add_argument("--whole", action="store_true")
    parser.add_argument("--qorcli", type=pathlib.Path, required=True)
    parser.add_argument("guide", type=pathlib.Path)
    arguments = parser.parse_args()
    files = shown_files(arguments.guide.read_text())
    found = list(differences(files, arguments.example, arguments.whole))
    if found:
        sys.exit("\n".join(found))
    with tempfile.TemporaryDirectory() as folder:
        arguments.rewrite = False
        arguments.root = pathlib.Path(folder, "work")
        if arguments.whole:
            arguments.root.mkdir()
            for name, blocks in files.items():
                (arguments.root / name).write_text("\n".join(blocks))
        else:
            shutil.copytree(arguments.example, arguments.root)
        programs = pathlib.Path(folder, "bin")
        programs.mkdir()
        (programs / "qorcli").symlink_to(arguments.qorcli.resolve())
        if not run_document.check(arguments.guide, arguments, str(programs)):
            sys.exit(1)


if __name__ == "__main__":
    main()
