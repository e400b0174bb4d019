#!/usr/bin/env python3
"""Makes a jar from a folder of classes: same classes, same bytes, whoever makes it and when.

Usage: make_jar.py JAR CLASSES_FOLDER MAIN_CLASS
"""

import sys
import zipfile
from pathlib import Path

# The oldest time that a zip entry can hold.
FIXED_TIME = (1980, 1, 1, 0, 0, 0)
READABLE_FILE = 0o100644 << 16
MADE_ON_UNIX = 3

MANIFEST = "Manifest-Version: 1.0\r\nMain-Class: {}\r\n\r\n"


def add(jar, name, content):
    # Stored, not compressed: what a compressor makes of it depends on its version.
    entry = zipfile.ZipInfo(name, FIXED_TIME)
    entry.create_system = MADE_ON_UNIX
    entry.external_attr = READABLE_FILE
    jar.writestr(entry, content)


def make_jar(path, classes, main_class):
    """Writes the manifest and then all files below `classes`, in the order of their names."""
    with zipfile.ZipFile(path, "w", zipfile.ZIP_STORED) as jar:
        add(jar, "META-INF/MANIFEST.MF", MANIFEST.format(main_class))
        files = (path for path in classes.rglob("*") if path.is_file())
        for name in sorted(path.relative_to(classes).as_posix() for path in files):
            add(jar, name, (classes / name).read_bytes())


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    make_jar(sys.argv[1], Path(sys.argv[2]), sys.argv[3])
