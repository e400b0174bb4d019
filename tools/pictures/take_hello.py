#!/usr/bin/env python3
"""Starts the packed example as a user of Windows would, without -console, and takes pictures while
it verifies the JVM that its search has found, and while it launches.

Usage: take_hello.py HELLO JAVA_STAND_IN FOLDER
       take_hello.py GATE COMMAND...

HELLO is the packed launcher, JAVA_STAND_IN the program that plays java.exe for the machine's own
Java. The second form is for this script itself: it stands in front of that Java and holds each
start of it until the picture is taken.
"""

import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from studio import Studio

HOST_JAVA = Path(__file__).resolve().parents[2] / "tests/endtoend/windows/host_java.py"
GATE = "gate"
PATIENCE = 60
EXIT_VALUE = 3


def wait_for(file):
    end = time.monotonic() + PATIENCE
    while not file.exists():
        if time.monotonic() > end:
            sys.exit(f"{file.name} doesn't come")
        time.sleep(0.01)


def hold(gate, command):
    """Says that a start has come, waits until it may go on, and goes on."""
    turn = sum(1 for _ in gate.glob("came.*")) + 1
    (gate / f"came.{turn}").touch()
    wait_for(gate / f"go.{turn}")
    sys.exit(subprocess.call(command))


def host_java():
    """The machine's own Java, and its version as in the name of its home."""
    java = Path(shutil.which("java")).resolve()
    properties = subprocess.run(
        [java, "-XshowSettings:properties", "-version"], capture_output=True, text=True
    ).stderr
    return java, properties.split("java.specification.version = ")[1].split()[0]


def main():
    hello, stand_in, folder = sys.argv[1], sys.argv[2], Path(sys.argv[3])
    java, version = host_java()
    with tempfile.TemporaryDirectory() as scratch, Studio(scratch) as studio:
        gate = Path(scratch) / GATE
        gate.mkdir()
        studio.lend(stand_in, f"Program Files/Java/jdk-{version}/bin/java.exe")
        program = studio.lend(hello, "hello.exe")
        words = [f"\\\\?\\unix{sys.executable}", __file__, gate]
        words += [sys.executable, "-I", "-S", "-B", HOST_JAVA, java]
        environment = {"CORVANE_HOST_JAVA": " ".join(f'"{word}"' for word in words)}
        with studio.start([program, "--exit", str(EXIT_VALUE)], environment) as run:
            for turn, picture in enumerate(("hello-search", "hello-launch"), 1):
                wait_for(gate / f"came.{turn}")
                studio.photograph(folder / f"{picture}.png", "-trim")
                (gate / f"go.{turn}").touch()
        if run.returncode != EXIT_VALUE:
            sys.exit(f"hello.exe ended with {run.returncode}")


if len(sys.argv) < 4:
    sys.exit(__doc__)
if Path(sys.argv[1]).name == GATE:
    hold(Path(sys.argv[1]), sys.argv[2:])
main()
