#!/usr/bin/env python3
"""Holds the sources against the table of floors: each folder is one floor, no include goes up or
across, no class is declared in one folder and defined in another, no circle of files exists, and
nobody but the platform layer asks which system this is.

Usage: floors_test.py SOURCE_FOLDER
"""

import re
import sys
from pathlib import Path

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
CLASS = re.compile(r"^\s*(?:class|struct) (\w+)[^;(]*\{", re.MULTILINE)
DEFINITION = re.compile(r"^(?:\w[^(;={}\n]*[ &*])?(\w+)::~?\w+\(", re.MULTILINE)
SYSTEM_QUESTION = re.compile(r"^\s*#.*\b(_WIN32|_WIN64|__linux__|__unix__|__MINGW32__)\b", re.MULTILINE)


def read_floors(path):
    rows = (line.split() for line in path.read_text(encoding="utf-8").splitlines())
    return {row[1]: int(row[0]) for row in rows if row and row[0] != "#"}


def folder_of(file):
    return file.split("/")[0]


def check_folders(source, floors):
    folders = {path.name for path in source.iterdir() if path.is_dir()}
    for name in sorted(folders ^ floors.keys()):
        yield f"{name}: " + ("no such folder" if name in floors else "lies in no row of the table")


def check_includes(includes, floors):
    for file, targets in includes.items():
        home = folder_of(file)
        for target in targets:
            other = folder_of(target)
            if target not in includes:
                yield f"{file}: includes {target}, which is no file of the house"
            elif other != home and floors[other] >= floors[home]:
                yield f"{file} (floor {floors[home]}): includes {target} (floor {floors[other]})"


def check_classes(texts):
    """What a class declares is defined in its own folder."""
    homes = {}
    for file, text in texts.items():
        for name in CLASS.findall(text):
            homes.setdefault(name, set()).add(folder_of(file))
    for file, text in texts.items():
        for name in sorted(set(DEFINITION.findall(text))):
            if folder_of(file) not in homes.get(name, {folder_of(file)}):
                yield f"{file}: defines what {name} declares in {', '.join(homes[name])}"


def find_circle(includes):
    """A circle of files as a list, or None."""
    done, path = set(), []

    def visit(file):
        if file in path:
            return path[path.index(file) :] + [file]
        if file in done:
            return None
        path.append(file)
        for target in includes.get(file, ()):
            circle = visit(target)
            if circle:
                return circle
        path.pop()
        done.add(file)
        return None

    return next(filter(None, map(visit, includes)), None)


def main():
    source = Path(sys.argv[1])
    files = sorted(p for p in source.rglob("*") if p.suffix in (".h", ".cpp"))
    texts = {p.relative_to(source).as_posix(): p.read_text(encoding="utf-8") for p in files}
    includes = {file: INCLUDE.findall(text) for file, text in texts.items()}
    floors = read_floors(source / "floors.txt")
    faults = list(check_folders(source, floors)) or list(check_includes(includes, floors))
    faults += check_classes(texts)
    circle = find_circle(includes)
    if circle:
        faults.append("a circle: " + " -> ".join(circle))
    faults += [
        f"{file}: asks which system this is"
        for file, text in texts.items()
        if not file.startswith("platform/") and SYSTEM_QUESTION.search(text)
    ]
    if not texts:
        faults.append(f"no sources in {source}")
    print(f"{len(texts)} files, {sum(map(len, includes.values()))} includes, {len(faults)} faults")
    if faults:
        sys.exit("\n".join(faults))


main()
