#!/usr/bin/env python3
"""Does what the pages tell: carries out the examples of each page, in their order, in a folder of its
own, and compares what they print.

    ```console         commands behind "$ ", and what they print; a line "..." stands for any lines,
                       and one for which nothing stands there must just end with 0
    ```WORD FILE       the content of a file
    ```script          a whole file: a script, launch script (launch), JVM file (jvm) or message, in
                       which corvane-pack check finds no mistake
    <!-- not run: WHY -->      in front of commands that can't be carried out here
    <!-- needs: PROGRAM -->    in front of commands that are left out where there is no such program
    <!-- before: COMMAND -->   what has to be there, which the page takes for granted

Numbers, sizes, temporary names and the home of Java may differ. Usage: examples.py BUILD WINDOWS_BUILD
[PAGE ...]; the exit value is 77 without the launcher for Windows, which the pages pack.
"""

import difflib
import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

PROJECT = Path(__file__).parents[2]
BLOCK = re.compile(r"(?:<!-- (not run|needs|before): (.+) -->\n+)?^( *)```(.*)\n((?:.*\n)*?)\3```$", re.MULTILINE)
HOME = "/home/you"
LIMIT = 120
# What stands for each of the words around it in a project that is sound.
PROJECT_FILES = {
    "script": ("INSTRUCTIONS", "<standard>"),
    "launch": ("LAUNCHSCRIPT", "a.launch"),
    "jvm": ("JVM", "<17+>"),
    "message": ("JVMMESSAGE", "<standard>"),
}
LAUNCH = 'COMMAND: """@JVM_HOME@\\@JVM_EXE@"" %CP%() Main"\n'
VARYING = [
    (r"LRE\w+(\.tmp)?", "LRE"),
    (r"\d[\d.]* ([kM]B|bytes)", "SIZE"),
    (r"jvm([/\\])[\w.+-]+", r"jvm\1JAVA"),
    (r"-?\d+(\.\d+)*", "#"),
    (r"^\.+$", "."),
    (r" +", " "),
]


def masked(text):
    for pattern, mask in VARYING:
        text = re.sub(pattern, mask, text, flags=re.MULTILINE)
    return text


def is_alike(expected, got):
    lines = [r"(?:.*\n)*?" if line == "..." else re.escape(masked(line)) + r"\n"
             for line in expected.splitlines()]
    return re.fullmatch("".join(lines), masked(got)) is not None


class Page:
    def __init__(self, path, build, windows_build):
        self.path = path
        self.folder = build / "docs-examples" / path.stem
        shutil.rmtree(self.folder, ignore_errors=True)
        self.home = self.folder / "home"
        self.home.mkdir(parents=True)
        self.install(build, windows_build)
        self.faults = 0

    def install(self, build, windows_build):
        """The pack tool as an author has it, with the bare launchers where it looks for them."""
        stubs = self.folder / "lib/corvane"
        stubs.mkdir(parents=True)
        for program in ("launcher", "unpack-java"):
            (stubs / program).symlink_to(build / program)
            (stubs / f"{program}.exe").symlink_to(windows_build / f"{program}.exe")
        (self.folder / "bin").mkdir()
        shutil.copy(build / "corvane-pack", self.folder / "bin")
        shutil.copy(build / "examples/hello/hello.jar", self.home)
        (self.home / "build").mkdir()
        (self.home / "build/host-release").symlink_to(build)

    def fault(self, line, text):
        self.faults += 1
        print(f"{self.path.relative_to(PROJECT)}:{line}: {text}")

    def run(self, *commands):
        """What each prints in one shell, and its exit value."""
        environment = {
            **os.environ, "PATH": f"{self.folder}/bin:{os.environ['PATH']}", "HOME": str(self.home),
            "CORVANE_REGISTRY": f"{self.folder}/registry", "LC_ALL": "C.UTF-8",
            "TMPDIR": "/tmp",
            "ASAN_OPTIONS": "detect_leaks=0",
        }
        words = [f"{command}\nvalue=$?; printf '\\1%d\\1' $value; (exit $value)"
                 for command in commands]
        done = subprocess.run(["bash", "-c", "\n".join(words)], cwd=self.home, env=environment,
                              text=True, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, timeout=LIMIT)
        text = done.stdout.replace(str(self.home), HOME)
        text = text.replace(str(self.home).replace("/", "\\"), HOME.replace("/", "\\"))
        parts = text.split("\1")
        return list(zip(parts[::2], parts[1::2]))

    def console(self, line, block):
        steps = [re.fullmatch(r"((?:.*\\\n)*.*\n)((?:.*\n)*)", step).groups()
                 for step in re.split(r"^\$ ", block, flags=re.MULTILINE)[1:]]
        outcomes = self.run(*(command for command, _ in steps))
        for (command, expected), (got, value) in zip(steps, outcomes):
            if not (is_alike(expected, got) if expected else value == "0"):
                diff = difflib.unified_diff(expected.splitlines(), got.splitlines(), "page", "run",
                                            lineterm="")
                self.fault(line, f"$ {command}" + "\n".join(diff))

    def check(self, line, kind, block):
        """The file, in the place of its kind in a project that is sound but for it."""
        project = self.folder / "project"
        shutil.rmtree(project, ignore_errors=True)
        project.mkdir()
        (project / "a.launch").write_text(LAUNCH)
        (project / f"of-page.{kind}").write_text(block)
        tags = {**dict(PROJECT_FILES.values()), PROJECT_FILES[kind][0]: f"of-page.{kind}"}
        (project / "a.manifest").write_text("".join(f"{tag}: {value}\n"
                                                    for tag, value in tags.items()))
        got = self.run(f"corvane-pack check {project}")[0][0]
        if ": error: " in got:
            self.fault(line, got)

    def block(self, line, note, info, block):
        refused = note[0] == "not run" or note[0] == "needs" and not shutil.which(note[1])
        kind, _, name = info.partition(" ")
        if note[0] == "before":
            self.run(note[1])
        if name:
            target = self.home / name
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_text(block)
        elif kind in PROJECT_FILES:
            self.check(line, kind, block)
        elif kind == "console" and not refused:
            self.console(line, block)
        elif block.startswith("$ ") and not refused:
            self.fault(line, "commands that nobody runs: say console, or why not")

    def carry_out(self):
        text = self.path.read_text(encoding="utf-8")
        for match in BLOCK.finditer(text):
            *note, indent, info, block = match.groups()
            block = re.sub(f"^{indent}", "", block, flags=re.MULTILINE)
            self.block(text[:match.start(4)].count("\n") + 1, note, info, block)
        return self.faults


def main():
    build, windows_build, *names = sys.argv[1:]
    if not Path(windows_build, "launcher.exe").exists():
        print(f"left out: {windows_build} has no launcher.exe")
        return 77
    pages = [Path(name).resolve() for name in names] or [
        PROJECT / "README.md", *sorted(PROJECT.glob("docs/*.md")),
        *sorted(PROJECT.glob("examples/*/README.md")), PROJECT / "java/README.md"]
    return 1 if sum(Page(page, Path(build), Path(windows_build)).carry_out() for page in pages) else 0


if __name__ == "__main__":
    sys.exit(main())
