#!/usr/bin/env python3
"""The jar maker: the same classes give the same bytes."""

import io
import os
import subprocess
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path

MAKER = Path(__file__).parents[2] / "java/make_jar.py"
CLASSES = {f"{folder}{letter}.class": (folder + letter).encode() * 100
           for folder in ("", "a/", "a/b/") for letter in "AFKPUZ"}


class JarTest(unittest.TestCase):
    def make(self, names, time, mask):
        """A jar of CLASSES, written in the order of `names`."""
        before = os.umask(mask)
        with tempfile.TemporaryDirectory() as folder:
            classes = Path(folder) / "classes"
            for name in names:
                path = classes / name
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_bytes(CLASSES[name])
                os.utime(path, (time, time))
            jar = Path(folder) / "out.jar"
            subprocess.run([sys.executable, "-B", MAKER, jar, classes, "a.A"], check=True)
            os.umask(before)
            return jar.read_bytes()

    def test_classes_alone_make_the_bytes_manifest_first(self):
        jar_bytes = self.make(sorted(CLASSES), 1_000_000_000, 0o022)
        self.assertEqual(jar_bytes, self.make(sorted(CLASSES, reverse=True), 1_700_000_000, 0o077))
        with zipfile.ZipFile(io.BytesIO(jar_bytes)) as jar:
            self.assertIsNone(jar.testzip())
            self.assertEqual(["META-INF/MANIFEST.MF", *sorted(CLASSES)], jar.namelist())
            self.assertIn(b"\r\nMain-Class: a.A\r\n", jar.read("META-INF/MANIFEST.MF"))
            self.assertEqual(CLASSES, {name: jar.read(name) for name in CLASSES})


if __name__ == "__main__":
    unittest.main()
