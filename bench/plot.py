#!/usr/bin/env python3
"""Plots the ratios in the results of compare.py.

usage: plot.py RESULTS.csv PLOT.svg

One row for each pattern with options, one mark for each tool: its processor
time relative to "grep -P". Plots nothing without such results.
"""
import csv
import sys

import matplotlib

matplotlib.use("svg")
matplotlib.rcParams["svg.hashsalt"] = "performance"  # the same file each time
from matplotlib import pyplot  # noqa: E402

MARKS = {"qorcli": "o", "grep -E": "|", "pcre2grep": "x", "rg": "+"}
REFERENCE = "grep -P"


def drawn(rows):
    """The figure, with the first row at the top."""
    def name(row):
        return f"{row['pattern']}  {row['options']}"

    names = list(dict.fromkeys(map(name, rows)))
    figure, axes = pyplot.subplots(figsize=(9, 0.3 * len(names) + 1.2))
    for tool, mark in MARKS.items():
        own = [row for row in rows if row["tool"] == tool]
        axes.plot([float(row["cpu_ratio"]) for row in own],
                  [names.index(name(row)) for row in own], mark, label=tool)
    axes.axvline(1, color="black", linewidth=1)
    axes.axvline(0.5, color="grey", linewidth=0.5)
    axes.set_yticks(range(len(names)), [text.replace("$", r"\$")
                                        for text in names])
    axes.invert_yaxis()
    axes.set_xlim(left=0)
    axes.set_xlabel(f"processor time in relation to that of {REFERENCE}")
    axes.grid(axis="y", linewidth=0.3)
    axes.legend()
    return figure


def main():
    with open(sys.argv[1], newline="", encoding="utf-8") as results:
        rows = [row for row in csv.DictReader(results)
                if row["mode"] == "ratios"]
    if rows:
        drawn(rows).savefig(sys.argv[2], bbox_inches="tight",
                            metadata={"Date": None})


if __name__ == "__main__":
    main()
