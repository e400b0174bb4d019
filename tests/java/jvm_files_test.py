#!/usr/bin/env python3
"""The JVM files that jvms/make_jvms.py writes."""

import re
import unittest
from pathlib import Path

import jvms
import tagfile

README = Path(__file__).parents[2] / "jvms/README.md"

# A path from a drive's root, or a directory beside the launcher; a value below one of the keys.
HINTS = {"PATH_HINT": re.compile(r"(\\[\w. ()-]+)+|jre"),
         "PLATFORM_HINT": re.compile(r"\\HKEY_LOCAL_MACHINE\\SOFTWARE(\\[\w. -]+){2,}\\\w+")}
# The version that a hint names, as 17, 1.8 or 1.8.0; behind a letter a number is no version.
VERSION = re.compile(r"(?<![A-Za-z0-9.])(?:1\.)?(\d+)")


def jvm_files():
    folder = jvms.BUILD / "jvms"
    return {str(path.relative_to(folder)): tagfile.read(path) for path in folder.glob("*/*.jvm")}


class JvmFilesTest(unittest.TestCase):
    def test_readme_lists_exactly_the_files(self):
        told = re.findall(r"\b(?:windows|linux)/\w+\.jvm", README.read_text())
        self.assertEqual(set(told), set(jvm_files()))

    def test_hints_are_well_formed_and_stand_once_under_their_version(self):
        for name, tags in jvm_files().items():
            for tag, form in HINTS.items():
                values = tags.get(tag, [])
                self.assertEqual([], [v for v in values if not form.fullmatch(v)], name)
                self.assertEqual(len(values), len(set(values)), name)
                versions = {version for v in values for version in VERSION.findall(v)}
                if not name.endswith("any.jvm"):
                    self.assertLessEqual(versions, {Path(name).stem}, name)


if __name__ == "__main__":
    unittest.main()
