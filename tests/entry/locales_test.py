#!/usr/bin/env python3
"""Starts the launcher in locales of its users, those of no language of ours among them, and looks
which language it speaks: Wine and the stand-in are to find the same one.

Usage: locales_test.py MESSAGES_FOLDER LAUNCHER...   (with the words that start it)
"""

import os
import re
import subprocess
import sys
from pathlib import Path

# The file name of the language that a user is to read.
LOCALES = {
    "en_GB": "en",
    "et_EE": "en",
    "uk_UA": "en",
    "th_TH": "en",
    "de_AT": "de",
    "nn_NO": "no",
    "ar_EG": "ar",
    "zh_SG": "zh_CN",
    "zh_HK": "zh_TW",
    "zh_MO": "zh_TW",
}
OPTIONS = ["-console", "-cv:in"]
MESSAGE = r'^22 "(.*)"$'


def spoken(launcher, locale):
    environment = {**os.environ, "LC_ALL": f"{locale}.UTF-8", "CORVANE_LOCALE": locale}
    command = [*launcher, *OPTIONS]
    return subprocess.run(command, env=environment, capture_output=True).stdout.decode().strip()


def main():
    folder, launcher = Path(sys.argv[1]), sys.argv[2:]
    languages = {
        re.search(MESSAGE, path.read_text(encoding="utf-8"), re.MULTILINE)[1]: path.stem
        for path in folder.glob("*.txt")
    }
    found = {locale: languages.get(spoken(launcher, locale)) for locale in LOCALES}
    if found != LOCALES:
        sys.exit(f"expected: {LOCALES}\ngot: {found}")


main()
