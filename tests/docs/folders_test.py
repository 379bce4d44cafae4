#!/usr/bin/env python3
"""The drawing of folders in a document, held to what their files include.

    folders_test.py DOCUMENT FOLDER

The drawing is the document's Mermaid flow chart: an arrow from each folder below
FOLDER to each that it includes, without those that follow from others. Files
that stand in FOLDER itself may include every folder.
"""

import pathlib
import re
import sys


def included_folders(folder):
    """Each folder below `folder`, with the others whose headers it includes."""
    folders = {path.name: set() for path in folder.iterdir() if path.is_dir()}
    for name, others in folders.items():
        for file in (folder / name).iterdir():
            includes = re.findall(r'#include "(?:(\w+)/)?(\w+)\.h"',
                                  file.read_text())
            for other, header in includes:
                if other in folders and other != name:
                    others.add(other)
                elif (folder / f'{header}.h').exists():
                    sys.exit(f'{file} includes {header}.h from above')
    return folders


def beneath(folders, name, path=()):
    """All that `name` includes, directly or through others."""
    if name in path:
        sys.exit('in a circle: ' + ' '.join([*path, name]))
    found = set()
    for other in folders[name]:
        found |= {other} | beneath(folders, other, (*path, name))
    return found


def arrows(folders):
    result = set()
    for name, others in folders.items():
        implied = set()
        for other in others:
            implied |= beneath(folders, other, (name,))
        result |= {(name, other) for other in others - implied}
    return result


def main():
    document, folder = map(pathlib.Path, sys.argv[1:])
    drawn = set(re.findall(r'^ +(\w+) --> (\w+)$', document.read_text(), re.M))
    actual = arrows(included_folders(folder))
    for name, other in sorted(actual - drawn):
        print(f'not drawn: {name} --> {other}')
    for name, other in sorted(drawn - actual):
        print(f'drawn, but not so: {name} --> {other}')
    sys.exit(drawn != actual)


main()
