#!/usr/bin/env python3
"""Shortens a program by what its resources hold twice: texts and dialogs stand under every number
that leads to their language, and the linker writes them anew for each.

Usage: share_data.py PROGRAM
"""

import struct
import sys
from pathlib import Path

SECTION_HEADER = struct.Struct("<8sIIII")  # name, size and place in memory, size and place in file
DATA_ENTRY = struct.Struct("<II")  # place in memory, size
SUBTREE = 0x80000000


def u32(data, at):
    return struct.unpack_from("<I", data, at)[0]


def data_entries(tree, at=0):
    """The positions of the entries that say where data lie, in the directory at `at` and below."""
    names, numbers = struct.unpack_from("<HH", tree, at + 12)
    for row in range(names + numbers):
        below = u32(tree, at + 16 + 8 * row + 4)
        if below & SUBTREE:
            yield from data_entries(tree, below & ~SUBTREE)
        else:
            yield below


def shared(section, base):
    """The section with each different piece of data once, behind the directories."""
    entries = [(at, *DATA_ENTRY.unpack_from(section, at)) for at in data_entries(section)]
    result = bytearray(section[: min(place for _, place, _ in entries) - base])
    places = {}
    for at, place, size in entries:
        piece = bytes(section[place - base :][:size])
        if piece not in places:
            result += bytes(-len(result) % 8)
            places[piece] = base + len(result)
            result += piece
        struct.pack_into("<I", result, at, places[piece])
    return result


def shorten(program):
    headers = u32(program, 0x3C)
    count, optional_size = struct.unpack_from("<H12xH", program, headers + 6)
    alignment = u32(program, headers + 24 + 36)
    rows = [headers + 24 + optional_size + 40 * row for row in range(count)]
    row = next(row for row in rows if program[row : row + 5] == b".rsrc")
    _, _, base, size, place = SECTION_HEADER.unpack_from(program, row)
    section = shared(program[place : place + size], base)
    section += bytes(-len(section) % alignment)
    gone = size + -size % alignment - len(section)
    # In memory the section stays as long as it was, since none may follow behind a gap.
    struct.pack_into("<I", program, row + 16, len(section))
    for other in rows:
        if u32(program, other + 20) > place:
            struct.pack_into("<I", program, other + 20, u32(program, other + 20) - gone)
    struct.pack_into("<I", program, headers + 24 + 64, 0)  # no checksum; drivers alone need one
    program[place : place + len(section) + gone] = section


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    path = Path(sys.argv[1])
    program = bytearray(path.read_bytes())
    shorten(program)
    path.write_bytes(program)


main()
