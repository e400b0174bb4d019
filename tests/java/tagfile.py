"""A reader of tag files that is stricter than the launcher's: for files that people start from."""

import re
from pathlib import Path


def unquoted(text):
    """The value as the launcher takes it: bare, or from quote to closing quote."""
    if not text.startswith('"'):
        return text
    pieces = text[1:].replace('""', "\0").split('"')
    if len(pieces) != 2 or pieces[1]:
        raise ValueError(f"bad quoting: {text}")
    return pieces[0].replace("\0", '"')


def parse(text):
    """Tags with their values. Raises ValueError with words for the first fault."""
    if not re.fullmatch(r"[\n -~]*\n", text):
        raise ValueError("holds more than printable ASCII, or does not end with a line feed")
    tags = {}
    lines = iter(line.strip() for line in text.splitlines())
    for line in lines:
        name, colon, value = line.partition(":")
        if not colon or not name or name in tags:
            raise ValueError(f"no tag, or the same again: {line}")
        tags[name] = [unquoted(value.strip())] if value.strip() else list(block(lines, name))
    return tags


def block(lines, name):
    for line in lines:
        if line == "/:":
            return
        yield unquoted(line)
    raise ValueError(f"the block of {name} has no end")


def read(path):
    try:
        return parse(Path(path).read_bytes().decode())
    except ValueError as fault:
        raise AssertionError(f"{path}: {fault}") from fault
