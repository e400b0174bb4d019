#!/usr/bin/env python3
"""The example application, started without the launcher."""

import tempfile
import unittest

import jvms

JAR = str(jvms.BUILD / "examples/hello/hello.jar")

# Arguments, exit value, standard error.
CASES = [
    ([], 0, ""),
    (["two words", "", 'quo"te', "\u00e9\u4e2d"], 0, ""),
    (["--exit", "3"], 3, ""),
    (["--err", "told you", "--exit", "0"], 0, "told you\n"),
    (["--exit", "some"], 2, "Hello: --exit needs a whole number, not 'some'\n"),
    (["--exit"], 2, "Hello: --exit needs a whole number, not ''\n"),
    (["--gui"], 2, "Hello: --gui needs a display\n"),
]


class HelloTest(unittest.TestCase):
    def test_report_streams_and_exit_value(self):
        java = jvms.all_jvms()[-1]
        for arguments, exit_value, error in CASES:
            with self.subTest(arguments=arguments), tempfile.TemporaryDirectory() as folder:
                result = jvms.run(java, "-Dapp.dir=here", "-cp", JAR, "Hello", *arguments,
                                  cwd=folder, env={"JAVA_HOME": "a home"})
                version = jvms.settings(java)["java.version"]
                lines = [f"Hello, {len(arguments)} argument(s)", *(f"  [{a}]" for a in arguments),
                         f"java.version = {version}", f"user.dir = {folder}", "app.dir = here",
                         f"java.class.path = {JAR}", "JAVA_HOME = a home"]
                self.assertEqual((exit_value, error), (result[0], result[2]))
                told = [line for line in result[1].splitlines() if not line.startswith("java.home")]
                self.assertEqual(lines, told)


if __name__ == "__main__":
    unittest.main()
