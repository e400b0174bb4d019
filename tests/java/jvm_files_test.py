#!/usr/bin/env python3
"""The JVM files of jvms/."""

import re
import unittest
from pathlib import Path

import tagfile

JVMS = Path(__file__).parents[2] / "jvms"
VERSIONS = ["8", "11", "17", "21", "25"]
JVM_EXE = {"windows": r"bin\java.exe", "linux": r"bin\java"}

SAME_IN_ALL = {"CLASSPATH": [" -cp "], "CLASSPATH_SEPARATOR": [";"], "SYSTEM": [" -D"],
               "SYSTEM_SEPARATOR": ["="]}

# A path from a drive's root, or a directory beside the launcher; a value below one of the keys.
HINTS = {"PATH_HINT": re.compile(r"(\\[\w. ()-]+)+|jre"),
         "PLATFORM_HINT": re.compile(r"\\HKEY_LOCAL_MACHINE\\SOFTWARE(\\[\w. -]+){2,}\\\w+")}
# The version that a hint names, as 17, 1.8 or 1.8.0; behind a letter a number is no version.
VERSION = re.compile(r"(?<![A-Za-z0-9.])(?:1\.)?(\d+)")


def jvm_files():
    for folder in JVM_EXE:
        for path in sorted((JVMS / folder).iterdir()):
            yield folder, path, tagfile.read(path)


class JvmFilesTest(unittest.TestCase):
    def test_readme_lists_exactly_the_files(self):
        told = set(re.findall(r"\b(?:windows|linux)/\w+\.jvm", (JVMS / "README.md").read_text()))
        self.assertEqual(told, {f"{folder}/{path.name}" for folder, path, _ in jvm_files()})

    def test_tags(self):
        for folder, path, tags in jvm_files():
            with self.subTest(path=path):
                version = path.stem
                is_any = version == "any"
                wanted = {
                    "DESC": ["Java 8 or later" if is_any else f"Java {version}"],
                    "JVM_EXE": [JVM_EXE[folder]],
                    "JVM_PROPERTIES": ["corvane.java.atleast.8=true" if is_any
                                       else f"corvane.java.feature={version}"],
                    **SAME_IN_ALL,
                    **({"SEARCH_ALL": ["1"]} if is_any and folder == "windows" else {}),
                }
                self.assertEqual(wanted, {k: v for k, v in tags.items() if k not in HINTS})

    def test_hints_are_well_formed_and_stand_once_under_their_version(self):
        for folder, path, tags in jvm_files():
            for tag, form in HINTS.items():
                with self.subTest(path=path, tag=tag):
                    values = tags.get(tag, [])
                    self.assertEqual(bool(values), tag == "PATH_HINT" or folder == "windows")
                    self.assertEqual([], [v for v in values if not form.fullmatch(v)])
                    self.assertEqual(len(values), len(set(values)))
                    if path.stem != "any":
                        named = {version for v in values for version in VERSION.findall(v)}
                        self.assertLessEqual(named, {path.stem})

    def test_each_registry_place_stands_with_its_32_bit_twin(self):
        for _, path, tags in jvm_files():
            values = tags.get("PLATFORM_HINT", [])
            twins = [v.replace(r"\SOFTWARE", r"\SOFTWARE\WOW6432Node") for v in values[::2]]
            self.assertEqual(twins, values[1::2], path)

    def test_any_has_the_hints_of_all_versions_newest_first(self):
        for folder in JVM_EXE:
            files = {p.stem: tags for f, p, tags in jvm_files() if f == folder}
            for tag in HINTS:
                with self.subTest(folder=folder, tag=tag):
                    common = set.intersection(*(set(files[v].get(tag, [])) for v in VERSIONS))
                    own = [hint for version in reversed(VERSIONS)
                           for hint in files[version].get(tag, []) if hint not in common]
                    told = files["any"].get(tag, [])
                    self.assertEqual(common, set(told) - set(own))
                    self.assertEqual(own, [hint for hint in told if hint not in common])


if __name__ == "__main__":
    unittest.main()
