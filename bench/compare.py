#!/usr/bin/env python3
"""Measures qorcli's filter side by side with other line filters.

usage: compare.py QORCLI RESULTS.csv [MODE...] [--size SIZE] [--repeat N]
                  [--folder DIR] [--tools TOOL...]

Modes (all by default):
  ratios    patterns, each plain and with options, over SIZE of log text
  measured  patterns of addresses and numbers, plain, over SIZE of text in which
            every line has dots and digits
  everyday  the same for a word in 4 KB: the cost of starting a program
  memory    the peak memory of qorcli, over four times SIZE
  linear    lengths of the text, of its lines and of the context

In each mode the tools run in turn, N rounds; times are medians, and a ratio is
the median over the rounds of the ratio to the time of "grep -P". Every tool must
print the same bytes as "grep -P"; otherwise exits with 1. All read standard
input and write a file in DIR, which should be in memory. The output of pcre2grep
is not compared where its rules for separators differ.
"""
import argparse
import csv
import filecmp
import itertools
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

import log_text

SEPARATOR = "   --"  # between groups of lines, as the filter prints it
REFERENCE = "grep -P"
TOOLS = [REFERENCE, "qorcli", "grep -E", "pcre2grep", "rg"]
BYTES = dict(os.environ, LC_ALL="C")  # the filter, too, matches bytes

QUAD = r"[0-9]{1,3}\.[0-9]{1,3}\.[0-9]{1,3}\.[0-9]{1,3}"
MAC = "(?:[0-9a-f]{2}:){5}[0-9a-f]{2}"
IPV6 = "(?:[0-9a-f]{1,4}:){7}[0-9a-f]{1,4}"

LOOKAROUND = "(?<!, )retry"  # "grep -E" and "rg" have no lookaround

# With the spelling for "grep -E" if it differs.
PATTERNS = {
    "error": None,
    "retry [0-9]+": None,
    QUAD: None,
    "link (up|down)$": None,
    r"(?:up|down|fail\w*)": r"(up|down|fail\w*)",
    r"\b\d{5}\b.*retry": r"\b[0-9]{5}\b.*retry",
    r"\d{5}": "[0-9]{5}",
    r"\d+\.\d+\.\d+\.\d+": r"[0-9]+\.[0-9]+\.[0-9]+\.[0-9]+",
    MAC: MAC.replace("?:", ""),
    IPV6: IPV6.replace("?:", ""),
    r"(\w+\s)+\d+$": r"(\w+\s)+[0-9]+$",
    LOOKAROUND: None,
}
MEASURED = [QUAD, r"\d{5}", r"\d+\.\d+\.\d+\.\d+", MAC, IPV6]
EVERYDAY = 20  # times as many turns, for runs of a few milliseconds
RARE = "06:13:19 core1 eth[0-9] link (up|down)$"  # one line in 40,000
OPTIONS = [[], ["-i"], ["-v"], ["-b", "2", "-a", "2"]]

COLUMNS = ["mode", "text", "pattern", "options", "tool", "wall_s", "cpu_s",
           "peak_kib", "wall_ratio", "cpu_ratio"]


def separated(command, option, options):
    """The command with its options, and the separator set by `option`."""
    if option and ("-b" in options or "-a" in options):
        command.append(f"{option}={SEPARATOR}")
    return command + [o.replace("-b", "-B").replace("-a", "-A")
                      for o in options]


def commands(qorcli, pattern, options):
    """The command of each tool, by name, in the order in which they run."""
    extended = PATTERNS.get(pattern) or pattern
    group = "--group-separator"
    tools = {
        REFERENCE: separated(["grep", "-P"], group, options) + [pattern],
        "qorcli": [qorcli, "-c",
                   " ".join(["filter", *options, f'"{pattern}"'])],
        "grep -E": separated(["grep", "-E"], group, options) + [extended],
        "pcre2grep": separated(["pcre2grep"], None, options) + [pattern],
        "rg": separated(["rg", "--no-config", "--no-unicode"],
                        "--context-separator", options) + [pattern],
    }
    if pattern == LOOKAROUND:
        del tools["grep -E"], tools["rg"]
    return tools


def same_rules(tool, options):
    """Whether a tool's output must equal that of "grep -P".

    pcre2grep also separates adjacent groups of lines.
    """
    return tool != "pcre2grep" or "-b" not in options


def run(command, text, out):
    """Runs the command once; returns wall and processor time in seconds."""
    actions = [(os.POSIX_SPAWN_OPEN, 0, text, os.O_RDONLY, 0),
               (os.POSIX_SPAWN_OPEN, 1, out,
                os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o600)]
    begin = time.perf_counter()
    child = os.posix_spawnp(command[0], command, BYTES, file_actions=actions)
    _, status, usage = os.wait4(child, 0)
    wall = time.perf_counter() - begin
    if os.waitstatus_to_exitcode(status) not in (0, 1):
        sys.exit(f"failed: {command}")
    return wall, usage.ru_utime + usage.ru_stime


def peak_memory(command, text, out):
    """Runs the command once; returns its peak memory in KiB."""
    with tempfile.NamedTemporaryFile("r") as report:
        run(["time", "-q", "-f", "%M", "-o", report.name, *command], text, out)
        return int(report.read())


class Comparison:
    """Measures, prints and collects the rows of the results."""

    def __init__(self, arguments, folder):
        self.qorcli = arguments.qorcli
        self.repeat = arguments.repeat
        self.tools = arguments.tools
        self.folder = pathlib.Path(folder)
        self.rows = []
        self.different = 0

    def text(self, size, length=None, kind="log"):
        """The path of a text of `size` bytes, which is created if necessary."""
        path = self.folder / f"text-{kind}-{size}-{length}"
        if not path.exists():
            for old in self.folder.glob("text-*"):
                old.unlink()
            with open(path, "wb") as out:
                log_text.write(out, size, length=length, kind=kind)
        return path

    def first_runs(self, tools, text, options):
        """Compares the tools' outputs; returns their peak memory."""
        peaks = {}
        expected = self.folder / "expected"
        for tool, command in tools.items():
            out = expected if tool == REFERENCE else self.folder / "out"
            peaks[tool] = peak_memory(command, text, out)
            if same_rules(tool, options) and \
                    not filecmp.cmp(expected, out, shallow=False):
                print(f"DIFFERENT: {command}")
                self.different += 1
        expected.unlink()
        return peaks

    def compare(self, mode, name, text, pattern, options, only=TOOLS):
        """Adds a row for each tool in `only`."""
        tools = {tool: command for tool, command in
                 commands(self.qorcli, pattern, options).items()
                 if tool in only and tool in self.tools}
        peaks = self.first_runs(tools, text, options)
        times = {tool: [] for tool in tools}
        for _ in range(self.repeat * (EVERYDAY if mode == "everyday" else 1)):
            for tool, command in tools.items():
                times[tool].append(run(command, text, self.folder / "out"))
        for tool in tools:
            self.add([mode, name, pattern, " ".join(options), tool],
                     times[tool], peaks[tool], times[REFERENCE])

    def add(self, what, times, peak, reference):
        """Adds and prints a row."""
        median = statistics.median
        wall, cpu = map(median, zip(*times))
        wall_ratio, cpu_ratio = map(median, zip(*(
            (own[0] / other[0], own[1] / other[1])
            for own, other in zip(times, reference))))
        row = what + [f"{wall:.4f}", f"{cpu:.4f}", peak,
                      f"{wall_ratio:.2f}", f"{cpu_ratio:.2f}"]
        self.rows.append(row)
        print("\t".join(map(str, row)), flush=True)


def ratios(comparison, size):
    for pattern in PATTERNS:
        for options in OPTIONS:
            comparison.compare("ratios", size, comparison.text(size), pattern,
                               options)


def measured(comparison, size):
    text = comparison.text(size, kind="measurements")
    for pattern in MEASURED:
        comparison.compare("measured", size, text, pattern, [])


def everyday(comparison, _):
    comparison.compare("everyday", 4096, comparison.text(4096), "error", [])


def memory(comparison, size):
    text = comparison.text(4 * size)
    cases = [*itertools.product(PATTERNS, OPTIONS), (RARE, ["-b", "100000"])]
    for pattern, options in cases:
        command = commands(comparison.qorcli, pattern, options)["qorcli"]
        peak = peak_memory(command, text, comparison.folder / "out")
        comparison.rows.append(["memory", 4 * size, pattern, " ".join(options),
                                "qorcli", "", "", peak, "", ""])
        print(*comparison.rows[-1], sep="\t", flush=True)


def linear(comparison, size):
    both = TOOLS[:2]
    million = 10 ** 6
    for count in (million, 10 * million, 100 * million, 1000 * million):
        for pattern in ("error", QUAD):
            comparison.compare("linear: text", count, comparison.text(count),
                               pattern, [], both)
    for before in (1, 1000, 100000):
        comparison.compare("linear: before", size, comparison.text(size),
                           RARE, ["-b", str(before)], both)
    for length in (10, 100, 1000, 10000, 100000, million):
        for pattern in ("link (up|down)$", QUAD):
            comparison.compare("linear: lines", length,
                               comparison.text(100 * million, length), pattern,
                               [], both)
    for length in (1000, 10000, 100000, million):
        for pattern in (r"\d{5}", MAC, IPV6):
            comparison.compare(
                "linear: measured lines", length,
                comparison.text(size, length, "measurements"), pattern, [],
                both)


MODES = {function.__name__: function
         for function in (ratios, measured, everyday, memory, linear)}


def main():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("qorcli")
    parser.add_argument("results")
    parser.add_argument("modes", nargs="*", default=list(MODES), metavar="MODE")
    parser.add_argument("--size", type=log_text.size_of, default="256M")
    parser.add_argument("--repeat", type=int, default=7)
    parser.add_argument("--folder", default="/dev/shm")
    parser.add_argument("--tools", nargs="+", default=TOOLS, choices=TOOLS)
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory(dir=arguments.folder) as folder:
        comparison = Comparison(arguments, folder)
        print(*COLUMNS, sep="\t")
        for mode in arguments.modes:
            MODES[mode](comparison, arguments.size)
    with open(arguments.results, "w", newline="", encoding="utf-8") as out:
        csv.writer(out, lineterminator="\n").writerows(
            [COLUMNS] + comparison.rows)
    sys.exit(f"{comparison.different} outputs differ"
             if comparison.different else 0)


if __name__ == "__main__":
    main()
