#!/usr/bin/env python3
"""Lays out each row of the page on where Java is found, as drive G:, registry and environment, lets
a packed launcher search there, and prints the rows that find something else.

Usage: layouts.py SETTINGS
"""

import re
import shutil
import sys
from pathlib import Path

import machine as machines
import run_case
from case_file import Case, Run
from stage import Stage

PAGE = Path(__file__).parents[2] / "docs/java-places.md"
ROW = re.compile(r"^\| (.+?) \| (`.+`) \| `(.+?)` \| (.+?) \|$", re.MULTILINE)
OWN = "this machine's own"
HIVES = {"HKLM": "HKEY_LOCAL_MACHINE", "HKCU": "HKEY_CURRENT_USER"}


class Layout:
    def __init__(self, row):
        self.title, things, self.jvm_file, found = row
        self.found = found.strip("`").replace("C:", "G:").replace("nothing", "")
        self.homes, self.links, self.values, self.environment = {}, {}, [], {}
        for thing in re.findall(r"`(.+?)`", things.replace("C:", "G:")):
            self.add(thing)

    def add(self, thing):
        if home := re.fullmatch(rf"(.+) \((\d+|{OWN})\)", thing):
            self.homes[home[1]] = home[2]
        elif " -> " in thing:
            link, target = thing.split(" -> ")
            self.links[link] = target
        elif variable := re.fullmatch(r"%(\w+)% = (.+)", thing):
            self.environment[variable[1]] = variable[2]
        else:
            self.values.append(thing.split(" = "))

    def registry(self):
        lines = ["REGEDIT4"]
        for place, text in self.values:
            hive, _, path = place.partition("\\")
            key, _, name = path.rpartition("\\")
            text = text.replace("\\", "\\\\")
            lines += ["", f"[{HIVES[hive]}\\{key}]", f'"{name}"="{text}"']
        return "\n".join([*lines, ""])


def on_drive(stage, path):
    return stage.root / path.replace("G:", "g").replace("\\", "/")


def lay_out(stage, layout):
    shutil.rmtree(stage.root / "g", ignore_errors=True)
    (stage.root / "g").mkdir()
    for path, version in layout.homes.items():
        home = on_drive(stage, path)
        played = f"corvane.java.feature={version}\ncorvane.java.atleast.8=true"
        stage.make_home(home, "real" if version == OWN else played)
        if layout.jvm_file.startswith("linux"):
            (home / "bin/java.exe").rename(home / "bin/java")
    for link, target in layout.links.items():
        on_drive(stage, link).symlink_to(on_drive(stage, target))
    (stage.root / "registry.reg").write_text(layout.registry(), encoding="utf-8")
    stage.write_file("search.tag", {"ACTION": "SEARCH", "JVM": f"jvms/{layout.jvm_file}.jvm"})


def with_variables(machine, words, variables):
    """Words that start the launcher, and what its environment needs besides."""
    if machine.name == "host" or not variables:
        return words, variables
    # Wine makes some of these anew for each program that the host starts, so its shell sets them.
    # The page's values have blanks, so that they stand in quotes.
    wine, *rest = words
    settings = [word for item in variables.items() for word in ("set", "=".join(item), "&")]
    return [wine, "cmd", "/c", *settings, *rest], {}


def found_in(stage, layout):
    """The home that the launcher prints, and its whole output for a look at a failure."""
    lay_out(stage, layout)
    run = Run(arguments=["-console", "-cv:silent", "-cv:in", "search.tag"])
    words, run.environment = with_variables(stage.machine, run_case.words_of(stage, run),
                                            layout.environment)
    stage.machine.open(stage.root, stage.case.drives)
    try:
        got = run_case.start(stage, run, words)
    finally:
        stage.machine.close(stage.root, stage.case.drives)
    homes = [line for line in got[1].splitlines() if line.startswith("G:")]
    return homes[0] if homes else "", got


def main(settings_path):
    machine = machines.load(machines.read_settings(settings_path))
    launcher = {"INSTRUCTIONS": "find.script", "JVM": "jvms/windows/any.jvm"}  # and a class to verify
    case = Case("layouts", Path(__file__).parent / "cases/layouts", "", [Run()], drives=["g"],
                homes={}, pack={"app/hello.exe": launcher})
    stage = Stage(machine, case, "")
    stage.prepare()
    layouts = [Layout(row) for row in ROW.findall(PAGE.read_text(encoding="utf-8"))]
    assert layouts, f"no rows in {PAGE}"
    wrong = 0
    for layout in layouts:
        if machine.name == "windows" and layout.jvm_file.startswith("linux"):
            continue
        home, got = found_in(stage, layout)
        if home != layout.found:
            wrong += 1
            print(f"=== {layout.title}: found {home or 'nothing'}, not {layout.found}", got)
    return 1 if wrong else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1]))
