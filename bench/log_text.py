#!/usr/bin/env python3
"""Writes log text, which is the same for the same seed and size.

usage: log_text.py SIZE [--kind KIND] [--seed N] [--line-length BYTES] > FILE

SIZE is in bytes and may end in K, M or G (powers of 1024); the text ends with the
last line that fits. Of the lines of kind "log", about 1 % contain the word
"error", 2 % end in "link up" or "link down", 10 % contain a dotted quad, 30 % a
number of five digits. Those of kind "measurements" all have dots and digits; 10 %
contain a dotted quad, 5 % a MAC and 5 % an IPv6 address, 1 % a number of five digits.
With a line length, each line is truncated or repeated to that length.
"""
import argparse
import functools
import random
import sys

BLOCK_LINES = 800
BLOCKS = 128  # of different text; a longer one repeats them in random order

UNITS = {"K": 1 << 10, "M": 1 << 20, "G": 1 << 30}

# For each kind: the frequency in 1000 lines, and the line; names in braces are
# replaced by numbers.
LOG = [
    (10, "error: crc on eth{few}, retry {few}"),
    (4, "bgp neighbour 10.0.{few}.1 ERROR hold timer expired"),
    (10, "eth{few} link down"),
    (10, "eth{few} link up"),
    (20, "eth{few} link up 10 Gbit/s"),
    (6, "raid[{pid}]: disk {few} does not answer, retry {few}"),
    (6, "login admin failed from 198.51.100.{byte}"),
    (90, "login admin from 198.51.100.{byte}"),
    (290, "cron[{pid}]: session opened for user monitor by (uid=0)"),
    (154, "eth{few} rx {large} packets tx {large} packets, 0 dropped"),
    (200, "fan tray {few} speed {rpm} rpm, temperature {two} C"),
    (100, "psu {few} output 12.{few} V, load {two} percent, all rails nominal"),
    (100, "config saved, revision {few}"),
]

RATES = "eth{few} rx {rx}.{tenths} tx {tx}.{hundredths:02} Mbit/s, "
STATE = "load 0.{load}, {degrees}.{tenths} C"
MEASUREMENTS = [
    (790, RATES + STATE),
    (100, RATES + "peer 198.51.100.{byte}, " + STATE),
    (50, RATES + "peer 52:54:00:{two:02x}:{byte:02x}:{load:02x}, " + STATE),
    (50, RATES + "peer 2001:db8:0:{few}:0:0:0:{byte:x}, " + STATE),
    (10, RATES + "{pid} errors, " + STATE),
]
KINDS = {"log": LOG, "measurements": MEASUREMENTS}

NUMBERS = {
    "log": {"few": (1, 8), "byte": (1, 254), "pid": (10000, 32767),
            "large": (100000, 9999999), "rpm": (3000, 6000), "two": (20, 60)},
    "measurements": {
        "milliseconds": (0, 999), "few": (1, 8), "byte": (1, 254),
        "pid": (10000, 32767), "two": (20, 60), "rx": (0, 940), "tx": (0, 940),
        "tenths": (0, 9), "hundredths": (0, 99), "load": (10, 99),
        "degrees": (20, 60)},
}
TIMES = {"log": "Mar 01 06:{minute:02}:{second:02} core1 ",
         "measurements":
             "Mar 01 06:{minute:02}:{second:02}.{milliseconds:03} core1 "}


def size_of(text):
    """The number of bytes that `text` names."""
    unit = UNITS.get(text[-1:].upper())
    return int(text[:-1]) * unit if unit else int(text)


def shaped(line, length):
    """The line, with its own length or `length` bytes including the line feed."""
    if length is None:
        return line + "\n"
    return (line * (length // len(line) + 1))[-(length - 1):] + "\n"


def block(source, kind, length, lines):
    """Lines from `source`, a random number generator, as bytes."""
    weights = [weight for weight, _ in KINDS[kind]]
    text = []
    for i, (_, line) in enumerate(
            source.choices(KINDS[kind], weights, k=lines)):
        numbers = {name: source.randint(*bounds)
                   for name, bounds in NUMBERS[kind].items()}
        numbers.update(minute=i // 60 % 60, second=i % 60)
        text.append(shaped((TIMES[kind] + line).format(**numbers), length))
    return "".join(text).encode()


def write(out, size, seed=1, length=None, kind="log"):
    """Writes at most `size` bytes of whole lines to the binary file `out`."""
    order = random.Random(seed)
    lines = max(1, min(BLOCK_LINES, 64 * BLOCK_LINES // (length or 64)))

    @functools.lru_cache(maxsize=None)
    def text_of(number):
        return block(random.Random(f"{seed}/{number}"), kind, length, lines)

    left = size
    while left > 0:
        text = text_of(order.randrange(BLOCKS))
        if len(text) > left:
            text = text[:text.rfind(b"\n", 0, left) + 1]
            left = len(text)
        out.write(text)
        left -= len(text)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("size", type=size_of)
    parser.add_argument("--kind", choices=KINDS, default="log")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--line-length", type=int)
    arguments = parser.parse_args()
    write(sys.stdout.buffer, arguments.size, arguments.seed,
          arguments.line_length, arguments.kind)


if __name__ == "__main__":
    main()
