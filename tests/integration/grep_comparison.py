#!/usr/bin/env python3
"""Compares the filter with grep -P on a log of this machine.

usage: grep_comparison.py QORCLI

Runs the engine's "filter" over the log for a list of patterns, with and without
-i and -v, and requires the very bytes that grep prints. Prints one line for
each comparison; exits with 1 when one differs, or when the log or the patterns
are such that the comparison would say nothing.
"""

import itertools
import os
import pathlib
import subprocess
import sys
import tempfile

LOG = pathlib.Path("/var/log/dpkg.log")

# No pattern here matches the empty text: grep keeps a line for an empty match,
# the filter does not.
PATTERNS = [
    "lib",
    "LIBC6",
    r"^\d{4}-\d\d-\d\d",
    r"\d$",
    r"\b(python3|perl)\b",
    "status (half-)?installed",
    r"[^ ]+:all",
    r"(\d)\1",
    r"lib(?!c)[a-z]+",
    r"a.*b.*c",
]

BYTES = dict(os.environ, LC_ALL="C")  # the filter, too, matches bytes


def log_of_machine():
    """The log as bytes, and its description."""
    if LOG.is_file() and LOG.stat().st_size > 0:
        return LOG.read_bytes(), str(LOG)
    print(f"WARNING: {LOG} is missing or empty; using the output of 'dpkg -l'")
    listing = subprocess.run(["dpkg", "-l"], check=True, stdout=subprocess.PIPE)
    return listing.stdout, "dpkg -l"


def grep(options, pattern, log):
    """The output of grep, whose status 1 only means that there is none."""
    run = subprocess.run(["grep", "-aP", *options, "-e", pattern, log],
                         env=BYTES, stdout=subprocess.PIPE)
    if run.returncode > 1:
        sys.exit(f"grep failed on {pattern}")
    return run.stdout


def engine_filter(qorcli, options, pattern, log):
    """The output of the engine."""
    command = " ".join(["filter", *options, f'"{pattern}"'])
    with open(log, "rb") as text:
        run = subprocess.run([qorcli, "-c", command], stdin=text, check=True,
                             env=BYTES, stdout=subprocess.PIPE)
    return run.stdout


def compare(qorcli, log):
    """The number of failed comparisons, and of those with some output."""
    failures = telling = 0
    flags = [[], ["-i"], ["-v"], ["-i", "-v"]]
    for pattern, options in itertools.product(PATTERNS, flags):
        expected = grep(options, pattern, log)
        same = engine_filter(qorcli, options, pattern, log) == expected
        lines = expected.count(b"\n")
        print("same" if same else "DIFFERENT", f"{lines} lines:",
              "filter", *options, pattern)
        failures += not same
        telling += lines > 0
    return failures, telling


def main():
    text, origin = log_of_machine()
    if not text.endswith(b"\n"):
        text = text[:text.rfind(b"\n") + 1]  # the last line is being written
    print(f"log: {origin}, {len(text)} bytes")
    with tempfile.NamedTemporaryFile() as log:
        log.write(text)
        log.flush()
        failures, telling = compare(sys.argv[1], log.name)
    if telling < 2 * len(PATTERNS):
        sys.exit("too few of the patterns keep a line of this log")
    if failures:
        sys.exit(f"{failures} comparisons differ")


if __name__ == "__main__":
    main()
