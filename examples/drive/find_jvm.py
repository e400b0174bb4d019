#!/usr/bin/env python3
"""Asks a packed launcher for a JVM: a program that drives one by an input file (README.md).

Usage: find_jvm.py LAUNCHER...   (the words that start the launcher, such as hello.exe)
"""

import os
import subprocess
import sys
import tempfile

# No tag shows anything of the search, so standard output holds the answer alone.
INPUT_FILE = "ACTION: SEARCH\n"


def search(launcher):
    """Home of the JVM that was found and path of its resolved JVM file, or None. Raises if the
    launcher doesn't answer."""
    with tempfile.NamedTemporaryFile("w", suffix=".tag", dir=".", delete=False) as file:
        file.write(INPUT_FILE)
    try:
        name = os.path.basename(file.name)
        ended = subprocess.run([*launcher, "-console", "-cv:silent", "-cv:in", name],
                               stdout=subprocess.PIPE, encoding="utf-8", check=True)
    finally:
        os.remove(file.name)
    match ended.stdout.splitlines():
        case ["1", home, jvm_file]:
            return home, jvm_file
        case ["0"]:
            return None
    raise ValueError(f"the launcher said {ended.stdout!r}")


def main(launcher):
    found = search(launcher)
    if found is None:
        print("No JVM found.")
        return 1
    home, jvm_file = found
    print(f"JVM home: {home}")
    print(f"JVM file: {jvm_file}")
    return 0


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1:]))
