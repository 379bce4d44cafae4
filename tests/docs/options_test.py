#!/usr/bin/env python3
"""Compares the options that the engine says it has with those in the man page, in
the README and in the completion scripts.

    options_test.py --qorcli PATH --root DIR
"""
import argparse
import pathlib
import re
import subprocess
import sys

# Every program has these two; not every list names them.
COMMON = {"-h"}


def of_help(qorcli):
    """Each option with its argument, as in "--plugin PATH"."""
    text = subprocess.run([qorcli, "--help"], stdout=subprocess.PIPE, text=True,
                          check=True).stdout
    options = set()
    for names, argument in re.findall(r"^  (-\S+)((?: [A-Z]+)?) .*$", text, re.M):
        options |= {name + argument for name in names.split(",")}
    return options


def of_man(text):
    options = set()
    for item in re.findall(r"^\.It (Fl .*)$", text, re.M):
        flags, _, argument = item.partition(" Ar ")
        for name in flags.replace("Fl ", "").split(" , "):
            options.add("-" + name + (" " + argument if argument else ""))
    return options


def of_synopsis(text):
    synopsis = text.partition(".Sh SYNOPSIS")[2].partition(".Sh DESCRIPTION")[0]
    found = re.findall(r"(?:Fl|\|) (-?[a-z][a-z-]*)(?: Ar ([A-Z]+))?", synopsis)
    return {"-" + name + (" " + argument if argument else "")
            for name, argument in found}


def of_readme(text):
    table = text.partition("| flag |")[2].partition("\n\n")[0]
    return {name for row in re.findall(r"^\| (`.*?`) \|", table, re.M)
            for name in re.findall(r"`(.*?)`", row)}


def names(options):
    return {option.split()[0] for option in options}


def of_bash(text):
    words = re.search(r"compgen -W '([^']*)'", text)
    return set(words.group(1).split())


def of_zsh(text):
    found = re.findall(r"^    '(?:\*|\(- \*\))?(-[a-z-]+)\[", text, re.M)
    for group in re.findall(r"\{(-[^{}]*)\}'\[", text):
        found += group.split(",")
    return set(found)


def of_fish(text):
    """Those with a description: the help that stands beside them."""
    found = set()
    for row in re.findall(r"^complete -c qorcli (.*) -d '", text, re.M):
        found |= {"-" + name for name in re.findall(r"-s ([a-z])", row)}
        found |= {"--" + name for name in re.findall(r"-l ([a-z-]+)", row)}
    return found


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--qorcli", type=pathlib.Path, required=True)
    parser.add_argument("--root", type=pathlib.Path, required=True)
    arguments = parser.parse_args()

    def read(path):
        return (arguments.root / path).read_text()

    options = of_help(arguments.qorcli)
    if len(options) < 10:
        sys.exit(f"only {sorted(options)} in the help")
    man = read("docs/man/qorcli.1")
    lists = {
        "the man page": (of_man(man), options),
        "its synopsis": (of_synopsis(man), options),
        "README.md": (of_readme(read("README.md")), options - COMMON),
        "qorcli.bash": (of_bash(read("engine/completion/qorcli.bash")),
                        names(options) - COMMON),
        "_qorcli": (of_zsh(read("engine/completion/_qorcli")), names(options)),
        "qorcli.fish": (of_fish(read("engine/completion/qorcli.fish")),
                        names(options)),
    }
    wrong = False
    for name, (found, expected) in lists.items():
        for option in sorted(found ^ expected):
            wrong = True
            print(f"{name}: {option}: {'missing' if option in expected else 'unknown'}")
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
