#!/usr/bin/env python3
"""The page of problems and mends quotes messages as they are, and leaves none out: of the user's
texts those that tell of a failure, of the launcher's sources those that end a run."""

import re
import sys
from pathlib import Path

PROJECT = Path(__file__).parents[2]
MESSAGES = PROJECT / "resources/messages/en.txt"
# Stages, titles and a button, by their numbers.
NO_FAILURES = {1, 2, 3, 4, 5, 7, 25, 26, 30, 31, 32, 105}
# Nobody meets it: the progress bar is made with its window.
NEVER_SHOWN = {20}
THROWN = re.compile(
    r'(?:throw LauncherException|throwSystemError|InstructionsException|throwError|failure\w*)'
    r'\((?:String\()?"((?:[^"\\]|\\.)+)"')
# A text over several lines of a source.
JOINED = re.compile(r'"\s*\n\s*"')


def sources():
    files = [*PROJECT.glob("src/*/*.cpp"), *PROJECT.glob("src/*/*.h"),
             *PROJECT.glob("packer/project/shipped/*.script")]
    return JOINED.sub("", "\n".join(path.read_text(encoding="utf-8") for path in files))


def user_texts():
    found = re.findall(r'^(\d+) "(.*)"$', MESSAGES.read_text(encoding="utf-8"), re.MULTILINE)
    return {int(number): re.sub(r"%\d!s!", "...", text) for number, text in found}


def quoted(page):
    cells = re.findall(r"^\| (`.*?`) \|", page, re.MULTILINE)
    return [message for cell in cells for message in re.findall(r"`(.*?)`(?:, |$)", cell)]


def main():
    page = quoted((PROJECT / "docs/problems.md").read_text(encoding="utf-8"))
    code, texts = sources(), user_texts()
    known = code + "\n" + "\n".join(texts.values())
    faults = [f"nobody says: {message}" for message in page
              if message not in texts.values()
              and not all(piece in known for piece in message.split("..."))]
    failures = [text for number, text in texts.items() if number not in NO_FAILURES | NEVER_SHOWN]
    faults += [f"not on the page: {text}" for text in failures if text not in page]
    faults += [f"not on the page: {text}" for text in THROWN.findall(code)
               if not any(message.startswith(text) for message in page)]
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
