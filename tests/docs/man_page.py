#!/usr/bin/env python3
"""The manual has the commands and options of the pack tool, and no others, and the formatter has
nothing to say of it. Usage: man_page.py CORVANE_PACK"""

import re
import shutil
import subprocess
import sys
from pathlib import Path

PAGE = Path(__file__).parents[2] / "docs/corvane-pack.1"
OPTION = re.compile(r"(?<![\w-])--?[a-z][a-z-]*")


def output(*words):
    return subprocess.run(words, capture_output=True, text=True, check=True).stdout


def of_tool(pack):
    commands = re.findall(r"^  (\w+) ", output(pack, "--help"), re.MULTILINE)
    return {command: set(OPTION.findall(output(pack, command, "--help").split("\n\n")[0]))
            for command in commands}


def of_page(text):
    sections = re.split(r'^\.SS "(\w+)', text.split(".SH EXIT")[0], flags=re.MULTILINE)[1:]
    return {command: set(re.findall(r"^\.BI? (-[a-z-]+)|^\.BR (-[a-z-]+)", body, re.MULTILINE))
            for command, body in zip(sections[::2], sections[1::2])}


def complaints():
    if not shutil.which("groff"):
        return ""
    return subprocess.run(["groff", "-man", "-ww", "-z", "-Tutf8", PAGE], capture_output=True,
                          text=True).stderr


def main(pack):
    page = of_page(PAGE.read_text(encoding="utf-8").replace("\\-", "-"))
    page = {command: {one or other for one, other in found} for command, found in page.items()}
    tool = of_tool(pack)
    faults = [f"{command}: the tool has {sorted(tool.get(command, ()))}, the manual "
              f"{sorted(page.get(command, ()))}"
              for command in tool.keys() | page.keys() if tool.get(command) != page.get(command)]
    print("\n".join(faults) + complaints())
    return 1 if faults or complaints() else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
