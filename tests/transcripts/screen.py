"""A terminal's screen, as far as the engine makes use of one."""

import codecs
import re
import unicodedata

TAB_STOP = 8
SEQUENCE = re.compile(r"\033(?:\[([?>]?)([0-9;]*)([@-~])|[()]([0-9A-Za-z])|([=>78DMc]))")


class Screen:
    """Feeds on what a program writes; a sequence that is not known is an error."""

    def __init__(self, columns, rows):
        self.columns, self.height = columns, rows
        self.rows = [[" "] * columns for _ in range(rows)]
        self.row = self.column = 0
        self.wrap_pending = False
        self.insert_mode = False
        self.modes = set()
        self.bells = 0
        self._decoder = codecs.getincrementaldecoder("utf-8")("replace")
        self._pending = ""

    def feed(self, data):
        text = self._pending + self._decoder.decode(data)
        position = 0
        while position < len(text):
            if text[position] != "\033":
                self._character(text[position])
                position += 1
                continue
            match = SEQUENCE.match(text, position)
            if match:
                self._sequence(*match.groups())
                position = match.end()
            elif len(text) - position < 16:
                break
            else:
                raise ValueError(f"unknown sequence {text[position:position + 16]!r}")
        self._pending = text[position:]

    def text(self):
        """The rows that hold anything, without blanks at their ends."""
        lines = ["".join(row).rstrip() for row in self.rows]
        while lines and not lines[-1]:
            lines.pop()
        return "".join(line + "\n" for line in lines)

    def _character(self, character):
        if character == "\r":
            self._move(self.row, 0)
        elif character == "\n":
            self._line_feed()
        elif character == "\b":
            self._move(self.row, self.column - 1)
        elif character == "\t":
            stop = (self.column // TAB_STOP + 1) * TAB_STOP
            self._move(self.row, min(stop, self.columns - 1))
        elif character == "\a":
            self.bells += 1
        elif character >= " " and character != "\x7f":
            self._print(character)
        elif character != "\0":
            raise ValueError(f"unknown control character {character!r}")

    def _print(self, character):
        if unicodedata.combining(character):
            return
        if self.wrap_pending:
            self._move(self.row, 0)
            self._line_feed()
        if self.insert_mode:
            self._insert(1)
        self.rows[self.row][self.column] = character
        if self.column + 1 < self.columns:
            self.column += 1
        else:
            self.wrap_pending = True

    def _move(self, row, column):
        self.row = max(0, min(row, self.height - 1))
        self.column = max(0, min(column, self.columns - 1))
        self.wrap_pending = False

    def _line_feed(self):
        self.wrap_pending = False
        if self.row + 1 < self.height:
            self.row += 1
        else:
            self.rows.append([" "] * self.columns)
            self.rows.pop(0)

    def _insert(self, count):
        row = self.rows[self.row]
        row[self.column:self.column] = [" "] * count
        del row[self.columns:]

    def _delete(self, count):
        row = self.rows[self.row]
        del row[self.column:self.column + count]
        row.extend([" "] * (self.columns - len(row)))

    def _erase_in_line(self, kind):
        first = 0 if kind else self.column
        last = self.column + 1 if kind == 1 else self.columns
        self.rows[self.row][first:last] = [" "] * (last - first)

    def _erase_in_display(self, kind):
        if kind == 1:
            raise ValueError("erasing the screen's beginning is not known")
        first = 0 if kind else self.row + 1
        if not kind:
            self._erase_in_line(0)
        for row in range(first, self.height):
            self.rows[row] = [" "] * self.columns

    def _sequence(self, private, parameters, final, charset, single):
        if charset or single in ("=", ">"):
            return
        numbers = [int(n) if n else 0 for n in (parameters or "").split(";")]
        first = numbers[0]
        count = max(1, first)
        if private == "?" and final in "hl":
            for mode in numbers:
                (self.modes.add if final == "h" else self.modes.discard)(mode)
        elif private or single:
            raise ValueError(f"unknown sequence {private}{parameters}{final}{single}")
        elif final == "A":
            self._move(self.row - count, self.column)
        elif final == "B":
            self._move(self.row + count, self.column)
        elif final == "C":
            self._move(self.row, self.column + count)
        elif final == "D":
            self._move(self.row, self.column - count)
        elif final == "G":
            self._move(self.row, count - 1)
        elif final == "H":
            column = numbers[1] if len(numbers) > 1 else 1
            self._move(count - 1, max(1, column) - 1)
        elif final == "J":
            self._erase_in_display(first)
        elif final == "K":
            self._erase_in_line(first)
        elif final == "P":
            self._delete(count)
        elif final == "@":
            self._insert(count)
        elif final in "hl" and first == 4:
            self.insert_mode = final == "h"
        elif final != "m":
            raise ValueError(f"unknown sequence {parameters}{final}")
