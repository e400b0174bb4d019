#!/usr/bin/env python3
"""The verification class on every JVM of this machine."""

import os
import unittest
import zipfile

import jvms

JAR = str(jvms.BUILD / "java/verify.jar")
AS_IF_JAR = str(jvms.BUILD / "tests/java/as_if.jar")
MAGIC = "1739021872\n"

VERSION = "java.specification.version"
MODEL = "sun.arch.data.model"
FEATURE = "corvane.java.feature"
BITS = "corvane.java.bits"
JDK = "corvane.java.jdk"
HEADLESS = "corvane.java.headless"

# A question as AsIf takes it, and the answer.
AS_IF = [
    (f"{FEATURE}|{VERSION}=1.5", "5"),
    (f"{FEATURE}|{VERSION}=1.8", "8"),
    (f"{FEATURE}|{VERSION}=21", "21"),
    (f"{FEATURE}|{VERSION}=odd", ""),
    (f"{FEATURE}|{VERSION}", ""),
    (f"{FEATURE}|{FEATURE}=99|{VERSION}=11", "11"),
    (f"corvane.java.atleast.8|{VERSION}=1.8", "true"),
    (f"corvane.java.atleast.9|{VERSION}=1.8", "false"),
    (f"corvane.java.atleast.9|{VERSION}=11", "true"),
    (f"corvane.java.atleast.21|{VERSION}", ""),
    ("corvane.java.atleast.1.8", ""),
    (f"{BITS}|{MODEL}=32", "32"),
    (f"{BITS}|{MODEL}=64|os.arch=x86", "64"),
    (f"{BITS}|{MODEL}=unknown|os.arch=x86", "32"),
    (f"{BITS}|{MODEL}|os.arch=amd64", "64"),
    (f"{BITS}|{MODEL}|os.arch=aarch64", "64"),
    (f"{BITS}|{MODEL}|os.arch", ""),
    ("corvane.java.class.java.util.List", "true"),
    ("corvane.java.class.java.util.Lisp", "false"),
    ("corvane.java.class.", "false"),
    ("corvane.java.unknown", ""),
    ("corvane.java.unknown|corvane.java.unknown=own", "own"),
    ("lines|lines=one\r\ntwo\n", "one\\r\\ntwo\\n"),
    ("path|path=C:\\new\\r", "C:\\new\\r"),
    ("blanks|blanks= a  b ", " a  b "),
    ("alphabets|alphabets=\u00e9\u4e2d", "\u00e9\u4e2d"),
]


def on_every_jvm(test):
    def run(self):
        for java in jvms.all_jvms():
            with self.subTest(java=java):
                test(self, java, jvms.settings(java))
    return run


def feature_of(settings):
    return int(settings[VERSION].removeprefix("1."))


class VerifyTest(unittest.TestCase):
    def check(self, java, options, answers):
        """`answers` are pairs of a name and its value."""
        names = [name for name, _ in answers]
        result = jvms.run(java, *options, "-cp", JAR, "Verify", *names)
        self.assertEqual((0, MAGIC + "".join(f"{value}\n" for _, value in answers), ""), result)

    @on_every_jvm
    def test_values_come_one_a_line_in_the_order_of_the_names(self, java, settings):
        names = ["java.version", "no.such.property", "", "java.vm.name", "java.home", "java.version"]
        answers = [("line.separator", "\\n"), *((name, settings.get(name, "")) for name in names)]
        self.check(java, [], answers)
        self.check(java, [], [])

    @on_every_jvm
    def test_added_names_agree_with_the_jvm(self, java, settings):
        feature = feature_of(settings)
        self.check(java, [], [(FEATURE, feature), (BITS, settings[MODEL]),
                              (f"corvane.java.atleast.{feature}", "true"),
                              (f"corvane.java.atleast.{feature + 1}", "false"),
                              (HEADLESS, "true")])  # there is no display
        if feature >= 9:
            compiler = str(jvms.has_module(java, "jdk.compiler")).lower()
            self.check(java, [], [(JDK, compiler)])
            self.check(java, ["--limit-modules", "java.base"], [(JDK, "false"), (HEADLESS, "true")])
        if jvms.has_module(java, "java.desktop"):
            self.check(java, ["-Djava.awt.headless=true"], [(HEADLESS, "true")])
            self.check(java, ["-Djava.awt.headless=false"], [(HEADLESS, "false")])

    @on_every_jvm
    def test_as_if_the_jvm_were_another(self, java, _):
        questions = [question for question, _ in AS_IF]
        jars = os.pathsep.join([JAR, AS_IF_JAR])
        _, out, err = jvms.run(java, "-cp", jars, "AsIf", *questions)
        answers = [answer.removesuffix("\n") for answer in out.split(MAGIC)[1:]]
        self.assertEqual(AS_IF, list(zip(questions, answers)), err)

    def test_class_file_version_is_no_later_than_that_of_java_8(self):
        with zipfile.ZipFile(JAR) as jar:
            major = int.from_bytes(jar.read("Verify.class")[6:8], "big")
        self.assertLessEqual(major, 52)


if __name__ == "__main__":
    unittest.main()
