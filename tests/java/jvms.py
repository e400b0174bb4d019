"""The machine's JVMs, and what they say of themselves."""

import os
import re
import subprocess
from pathlib import Path

BUILD = Path(os.environ["CORVANE_BUILD"])


def all_jvms():
    """Each JVM once: the one that CORVANE_JAVA names and those of /usr/lib/jvm."""
    found = [Path(os.environ["CORVANE_JAVA"]), *sorted(Path("/usr/lib/jvm").glob("*/bin/java"))]
    return sorted({str(path.resolve()) for path in found})


def run(java, *arguments):
    """Exit value, standard output and standard error; without a display, in a UTF-8 locale."""
    environment = {k: v for k, v in os.environ.items() if k not in ("DISPLAY", "JAVA_TOOL_OPTIONS")}
    environment["LC_ALL"] = "C.UTF-8"
    ended = subprocess.run([java, *arguments], env=environment, capture_output=True)
    return ended.returncode, ended.stdout.decode(), ended.stderr.decode()


def settings(java):
    """The system properties that the JVM itself lists, of those with one line."""
    _, _, text = run(java, "-XshowSettings:properties", "-version")
    return dict(re.findall(r"^    (\S+) = (.*)$", text, re.MULTILINE))


def has_module(java, name):
    """Whether a JVM of Java 9 or later holds a module."""
    return f"{name}@" in run(java, "--list-modules")[1]
