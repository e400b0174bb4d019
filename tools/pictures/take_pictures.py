#!/usr/bin/env python3
"""Takes the pictures of the launcher's windows for the documentation, in several languages.

Usage: take_pictures.py PROGRAM FOLDER

PROGRAM is take_picture.exe. Beyond what studio.py says it needs fonts for all languages
(fonts-dejavu-extra, fonts-noto-cjk).
"""

import subprocess
import sys
import tempfile
from dataclasses import dataclass
from pathlib import Path

from studio import Studio

FONT_KEY = r"HKEY_CURRENT_USER\Software\Wine\Fonts\Replacements"
WINDOWS_FONTS = ("MS Sans Serif", "MS UI Gothic", "Tahoma")


@dataclass
class Language:
    """A language, and the font that stands for those of Windows; Wine's own have Latin alone."""

    locale: str
    font: str = ""


LANGUAGES = {
    "en": Language("en_US"),
    "de": Language("de_DE"),
    "ja": Language("ja_JP", "Noto Sans CJK JP"),
    "ar": Language("ar_SA", "DejaVu Sans Condensed"),
    "he": Language("he_IL", "DejaVu Sans Condensed"),
}
SCENES = {"en": ("tall", "short", "failure", "advice")}
USUAL_SCENES = ("tall", "short")


def take(studio, words, environment, target):
    with studio.start(
        words, environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True
    ) as shown:
        area = shown.stdout.readline().strip()
        if area:
            studio.photograph(target, "-crop", area)
        shown.stdin.close()
    if shown.returncode != 0:
        sys.exit(f"{target}: not taken")


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    program, folder = sys.argv[1], Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as scratch, Studio(scratch) as studio:
        for name, language in LANGUAGES.items():
            environment = {"CORVANE_LOCALE": language.locale}
            for font in WINDOWS_FONTS if language.font else ():
                studio.set(FONT_KEY, font, language.font)
            for scene in SCENES.get(name, USUAL_SCENES):
                take(studio, [program, scene], environment, folder / f"{scene}-{name}.png")


main()
