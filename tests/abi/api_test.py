#!/usr/bin/env python3
"""What script/api takes for a break of a released interface, and what not.

    api_test.py SCRIPT-API
"""
import pathlib
import subprocess
import sys
import tempfile

RELEASED = """
struct Record { unsigned version; unsigned count; };
class Base { public: virtual ~Base(); virtual void run(); void set(int, int = 0); };
"""

# What changes, into what, and whether users of the release can live with it.
CHANGES = [
    ("unsigned count;", "unsigned count; unsigned last;", True),
    ("unsigned version;", "unsigned version; unsigned between;", False),
    ("unsigned version; unsigned count;", "unsigned count; unsigned version;", False),
    ("unsigned count;", "int count;", False),
    ("void run();", "void run(); virtual void more();", True),
    ("virtual void run();", "virtual void more(); virtual void run();", False),
    ("void run();", "void run(); virtual void more() = 0;", False),
    ("void run();", "void run(); private: virtual void more() = 0; public:", False),
    ("void set(int, int = 0);", "void set(int, int = 0); void reset();", True),
    ("void set(int, int = 0);", "void set(int, int);", False),
    ("void set(int, int = 0);", "void set(int = 0, int = 0);", True),
    ("virtual void run();", "", False),
    ("class Base {", "class Other { public: virtual void f() = 0; }; class Base {", True),
]


def api(script, headers, *released):
    return subprocess.run([sys.executable, script, headers, *released],
                          capture_output=True, text=True, check=False)


def main():
    script = sys.argv[1]
    failures = 0
    with tempfile.TemporaryDirectory() as folder:
        header = pathlib.Path(folder, "Interface.h")
        header.write_text(RELEASED)
        released = pathlib.Path(folder, "released.txt")
        released.write_text(api(script, folder).stdout)
        for old, new, compatible in CHANGES:
            assert old in RELEASED
            header.write_text(RELEASED.replace(old, new))
            status = api(script, folder, str(released)).returncode
            if status != (0 if compatible else 1):
                failures += 1
                print(f"exits with {status}: {old!r} becomes {new!r}")
    print(f"api: {len(CHANGES)} cases, {failures} failed")
    sys.exit(1 if failures else 0)


main()
