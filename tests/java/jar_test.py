#!/usr/bin/env python3
"""The jar maker: the same classes give the same bytes."""

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

    def test_bytes_depend_on_the_classes_alone(self):
        first = self.make(sorted(CLASSES), 1_000_000_000, 0o022)
        second = self.make(sorted(CLASSES, reverse=True), 1_700_000_000, 0o077)
        self.assertEqual(first, second)

    def test_the_jar_holds_the_manifest_first_and_every_class(self):
        with tempfile.TemporaryFile() as file:
            file.write(self.make(CLASSES, 1_000_000_000, 0o022))
            with zipfile.ZipFile(file) as jar:
                self.assertIsNone(jar.testzip())
                self.assertEqual(["META-INF/MANIFEST.MF", *sorted(CLASSES)], jar.namelist())
                self.assertEqual({1980}, {entry.date_time[0] for entry in jar.infolist()})
                self.assertIn(b"\r\nMain-Class: a.A\r\n", jar.read("META-INF/MANIFEST.MF"))
                self.assertEqual(CLASSES, {name: jar.read(name) for name in CLASSES})


if __name__ == "__main__":
    unittest.main()
