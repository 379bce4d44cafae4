#!/usr/bin/env python3
"""Plays a session at a terminal and compares its drawing with docs/terminal.svg.

    draw_terminal.py --qorcli PATH [--rewrite]

The engine runs in the repository's root. What it shows is in the drawing as it is;
colours tell what was typed, what Tab completed, and what the engine printed.

--rewrite draws the session anew. Look at the drawing before you believe it.
"""
import argparse
import difflib
import itertools
import pathlib
import re
import sys
import tempfile
import time
from html import escape

sys.dont_write_bytecode = True  # the source folder stays as it is
ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests/docs"))
from run_session import COLUMNS, terminal_for  # noqa: E402
from run_transcripts import LIMIT, keys_to_bytes  # noqa: E402

DRAWING = ROOT / "docs/terminal.svg"
TITLE = "A session: Tab completes words, ? explains them, errors show their place"
PROMPT = "qorcli> "
SESSION = [
    "sh<Tab>f<Tab>ex<Tab>d<Tab>| fi<Tab>--i?",
    "g<Tab>error -a 1 | head 5<Enter>",
    "show flie examples/device.log<Enter>",
]

# Pixels.
CELL, LINE, MARGIN, BAR = 8.4, 21, 20, 40
HEAD = BAR + 16  # above the first row
WIDTH = round(2 * MARGIN + COLUMNS * CELL)

STYLE = """\
text{font:14px ui-monospace,SFMono-Regular,Menlo,Consolas,"DejaVu Sans Mono",monospace;\
font-variant-ligatures:none;white-space:pre}
.printed{fill:#b1bac4}
.prompt{fill:#7ee787}
.typed{fill:#f0f6fc}
.completed{fill:#79c0ff}
.mark{fill:#ff7b72}
.key{fill:#e3b341}
"""


class Session:
    """Types at the engine, and notes in which cells Tab put text and where `?` was
    pressed, as rows and columns."""

    def __init__(self, terminal):
        self.terminal, self.screen = terminal, terminal.screen
        self.completed, self.asked = set(), []
        self._wait(lambda: self._line() == PROMPT, "the prompt")
        self.first_row = self.screen.row

    def type(self, keys):
        for key in re.findall(r"<\w+>|\?|[^<?]+", keys):
            row, column, line = self.screen.row, self.screen.column, self._line()
            self.terminal.type(keys_to_bytes(key))
            if key == "<Tab>":
                self._wait(lambda: self.screen.column > column, "the completed word")
                self.completed |= {(row, cell)
                                   for cell in range(column, self.screen.column)}
            elif key == "?":
                self._wait(lambda: self.screen.row > row and self._line() == line, "help")
                self.asked.append((row, column))
            elif key == "<Enter>":
                self._wait(lambda: self.screen.row > row and self._line() == PROMPT,
                           "the prompt")
            else:
                self._wait(lambda: self._line() == line + key, key)

    def runs(self):
        """Yields the runs of cells of one class: row, column, text, class."""
        lines = self.screen.text().splitlines()
        for row in range(self.first_row, len(lines)):
            column = 0
            for style, run in itertools.groupby(self._styles(row, lines[row])):
                end = column + len(list(run))
                yield row - self.first_row, column, lines[row][column:end], style
                column = end

    def _styles(self, row, line):
        for column in range(len(line)):
            if line.lstrip().startswith("^"):
                yield "mark"
            elif not line.startswith(PROMPT.rstrip()):
                yield "printed"
            elif column < len(PROMPT):
                yield "prompt"
            else:
                yield "completed" if (row, column) in self.completed else "typed"

    def _line(self):
        """The row up to the cursor."""
        return "".join(self.screen.rows[self.screen.row][:self.screen.column])

    def _wait(self, reached, what):
        deadline = time.monotonic() + LIMIT
        while not reached() and time.monotonic() < deadline:
            self.terminal.read(0.1)
        while self.terminal.read(0.05):
            pass
        if not reached():
            sys.exit(f"{what} is not seen\n{self.screen.text()}")


def text(x, y, content, style):
    """A text in the cells from x on. Its width is given, since fonts differ."""
    return (f'<text class="{style}" x="{x:.1f}" y="{y}"'
            f' textLength="{len(content) * CELL:.1f}" xml:space="preserve">'
            f"{escape(content, quote=False)}</text>")


def place(row, column):
    """The left end of a cell's base line."""
    return MARGIN + column * CELL, HEAD + row * LINE + 15


def key(row, column):
    """The key `?`, pressed in a cell. It stands a cell further on, in a frame."""
    x, y = place(row, column + 1)
    return [f'<rect x="{x - 4:.1f}" y="{y - 15}" width="{CELL + 8:.1f}" height="20" rx="4"'
            ' fill="none" stroke="#e3b341"/>', text(x, y, "?", "key")]


def legend():
    """What the colours say, from the right end of the bar."""
    x = WIDTH - MARGIN
    for style, words in (("key", "asked with ?"), ("completed", "completed by Tab"),
                         ("typed", "typed")):
        x -= len(words) * CELL
        yield text(x, 25, words, style)
        x -= 2 * CELL


def frame(height):
    dots = [f'<circle cx="{MARGIN + 6 + n * 20}" cy="{BAR / 2:.0f}" r="6" fill="{colour}"/>'
            for n, colour in enumerate(("#ff5f57", "#febc2e", "#28c840"))]
    return [
        f'<rect x="0.5" y="0.5" width="{WIDTH - 1}" height="{height - 1}" rx="10"'
        ' fill="#0d1117" stroke="#484f58"/>',
        f'<path d="M0.5 {BAR}V10.5a10 10 0 0 1 10 -10H{WIDTH - 10.5}'
        f'a10 10 0 0 1 10 10V{BAR}z" fill="#21262d" stroke="#484f58"/>', *dots]


def drawing(session):
    runs = list(session.runs())
    rows = runs[-1][0] + 1
    height = HEAD + rows * LINE + 14
    x, y = place(rows - 1, session.screen.column)
    elements = [
        f"<title>{TITLE}</title>", f"<style>{STYLE}</style>", *frame(height), *legend(),
        *(text(*place(row, column), content, style)
          for row, column, content, style in runs if content.strip()),
        *itertools.chain.from_iterable(
            key(row - session.first_row, column) for row, column in session.asked),
        f'<rect x="{x:.1f}" y="{y - 13}" width="{CELL}" height="17" fill="#f0f6fc"/>',
    ]
    return "\n".join([f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}"'
                      f' height="{height}" viewBox="0 0 {WIDTH} {height}" role="img">',
                      *elements, "</svg>", ""])


def played(qorcli):
    """Plays the session and returns its drawing."""
    with tempfile.TemporaryDirectory() as folder:
        terminal = terminal_for(f"'{qorcli.resolve()}'", ROOT, HOME=folder,
                                XDG_STATE_HOME=folder)
        try:
            session = Session(terminal)
            for keys in SESSION:
                session.type(keys)
            return drawing(session)
        finally:
            terminal.close()


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--qorcli", type=pathlib.Path, required=True)
    parser.add_argument("--rewrite", action="store_true")
    arguments = parser.parse_args()
    now = played(arguments.qorcli)
    if arguments.rewrite:
        DRAWING.write_text(now, encoding="utf-8")
        return
    drawn = DRAWING.read_text(encoding="utf-8")
    sys.stdout.writelines(difflib.unified_diff(
        drawn.splitlines(keepends=True), now.splitlines(keepends=True), "drawn", "played"))
    sys.exit(0 if now == drawn else 1)


if __name__ == "__main__":
    main()
