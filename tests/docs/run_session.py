#!/usr/bin/env python3
"""Types what a document says is typed, and compares the screens that it shows.

    run_session.py --qorcli PATH --root DIR [--rewrite] DOCUMENT

A screen is a block fenced as "terminal", behind which stand the keys that lead to
it, written as in transcripts. It shows the rows from the line that was being typed
on. The engine runs in the repository's root, on one terminal for all screens, and
must have ended after the last one.
"""
import argparse
import os
import pathlib
import sys
import tempfile
import time
import types

sys.dont_write_bytecode = True  # the source folder stays as it is
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "transcripts"))
from run_transcripts import LIMIT, Terminal, keys_to_bytes  # noqa: E402

COLUMNS, ROWS = 80, 500  # so that nothing scrolls away
FENCE = "```terminal"


def rows_from(terminal, row):
    return terminal.screen.text().splitlines()[row:]


def shown(terminal, keys, expected, rewrite):
    """Types keys and returns the rows that are seen then."""
    row = terminal.screen.row
    terminal.type(keys_to_bytes(keys))
    if rewrite:
        terminal.settle()
    deadline = time.monotonic() + LIMIT
    while rows_from(terminal, row) != expected and time.monotonic() < deadline:
        if rewrite:
            break
        terminal.read(0.1)
    return rows_from(terminal, row)


def terminal_for(command, work, **environment):
    """Starts a program at a terminal, in the folder `work`."""
    world = types.SimpleNamespace(
        work=work, environment=dict(os.environ, LC_ALL="C.UTF-8", TERM="xterm"))
    return Terminal(command, world, environment, COLUMNS, ROWS)


def replayed(lines, terminal, rewrite):
    """Returns the lines of a document with the screens as they are now, and how
    many screens there are."""
    result, screens, place = [], 0, 0
    while place < len(lines):
        line = lines[place]
        result.append(line)
        place += 1
        if not line.startswith(FENCE):
            continue
        end = lines.index("```", place)
        result += shown(terminal, line[len(FENCE):].strip(), lines[place:end],
                        rewrite)
        screens += 1
        place = end
    return result, screens


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--qorcli", type=pathlib.Path, required=True)
    parser.add_argument("--root", type=pathlib.Path, required=True)
    parser.add_argument("--rewrite", action="store_true")
    parser.add_argument("document", type=pathlib.Path)
    arguments = parser.parse_args()
    lines = arguments.document.read_text().splitlines()
    with tempfile.TemporaryDirectory() as folder:
        terminal = terminal_for(f"'{arguments.qorcli.resolve()}'", arguments.root,
                                HOME=folder, XDG_STATE_HOME=folder)
        try:
            now, screens = replayed(lines, terminal, arguments.rewrite)
            status = terminal.wait_for_exit()
        finally:
            terminal.close()
    print(f"{arguments.document}: {screens} screens, status {status}")
    if arguments.rewrite:
        arguments.document.write_text("\n".join(now) + "\n")
    elif now != lines:
        import difflib
        print("\n".join(difflib.unified_diff(lines, now, "written", "shown",
                                             lineterm="")))
    sys.exit(0 if screens and status == 0 and (arguments.rewrite or now == lines)
             else 1)


if __name__ == "__main__":
    main()
