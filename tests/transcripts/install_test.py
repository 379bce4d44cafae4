#!/usr/bin/env python3
"""Installs a build into an empty folder and runs the engine from there.

Usage: install_test.py CMAKE BUILD_FOLDER BIN_FOLDER
"""

import os
import pathlib
import subprocess
import sys
import tempfile


def main():
    cmake, build, programs = sys.argv[1:]
    environment = {
        name: value
        for name, value in os.environ.items()
        if name not in ("LD_LIBRARY_PATH", "DESTDIR")
    }
    with tempfile.TemporaryDirectory() as prefix:
        subprocess.run([cmake, "--install", build, "--prefix", prefix],
                       check=True, stdout=subprocess.DEVNULL, env=environment)
        qorcli = pathlib.Path(prefix, programs, "qorcli")
        for line, expected in (("echo x | filter x", "x\n"),
                               ("echo x | filter y", "")):
            found = subprocess.run([qorcli, "-c", line], check=True, text=True,
                                   stdout=subprocess.PIPE,
                                   env=environment).stdout
            if found != expected:
                sys.exit(f"{line}: {found!r} instead of {expected!r}")


if __name__ == "__main__":
    main()
