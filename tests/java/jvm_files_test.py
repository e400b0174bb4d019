#!/usr/bin/env python3
"""The table from which the JVM files are made."""

import re
import sys
import unittest
from pathlib import Path

FOLDER = Path(__file__).parents[2] / "jvms"
sys.path.append(str(FOLDER))
import make_jvms  # noqa: E402

# A value below one of the keys; a path from a drive's root, or behind a variable.
FORMS = {make_jvms.windows_registry:
         re.compile(r"\\HKEY_(LOCAL_MACHINE|CURRENT_USER)\\SOFTWARE(\\[\w. *-]+){2,}\\\w+"),
         make_jvms.windows_paths: re.compile(r"(\\[\w. ()*-]+)+"),
         make_jvms.windows_variables: re.compile(r"%\w+%(\\[\w. *-]+)+"),
         make_jvms.linux_paths: re.compile(r"(\\[\w. *-]+)+"),
         make_jvms.linux_variables: re.compile(r"%\w+%(\\[\w. *-]+)+")}
# The version that a hint names, as 17, 1.8 or 1.8.0; behind a letter a number is no version.
VERSION = re.compile(r"(?<![A-Za-z0-9.])(?:1\.)?(\d+)")


class JvmFilesTest(unittest.TestCase):
    def test_readme_lists_exactly_the_files(self):
        told = re.findall(r"\b(?:windows|linux)/[\w+]+\.jvm", (FOLDER / "README.md").read_text("utf-8"))
        self.assertEqual(set(told), set(dict(make_jvms.jvm_files())))

    def test_hints_are_well_formed_and_stand_once_under_their_version(self):
        for hints, form in FORMS.items():
            for version in make_jvms.VERSIONS:
                with self.subTest(hints=hints.__name__, version=version):
                    values = hints(version)
                    self.assertEqual([], [v for v in values if not form.fullmatch(v)])
                    self.assertEqual(len(values), len(set(values)))
                    named = {number for v in values for number in VERSION.findall(v)}
                    self.assertLessEqual(named, {str(version)})


if __name__ == "__main__":
    unittest.main()
