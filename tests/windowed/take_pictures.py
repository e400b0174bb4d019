#!/usr/bin/env python3
"""Takes the pictures of the launcher's windows for the documentation, in several languages.

Usage: take_pictures.py PROGRAM FOLDER

PROGRAM is take_picture.exe. Needs Xvfb and Wine, ImageMagick (imagemagick), the sources of the
locales (locales), and fonts for all languages (fonts-wine, fonts-dejavu-extra, fonts-noto-cjk).
"""

import os
import shutil
import subprocess
import sys
import tempfile
from dataclasses import dataclass
from pathlib import Path

SESSION = Path(__file__).resolve().parent / "session"
CAPTION_SIGNS = "/usr/share/wine/fonts/marlett.ttf"
FONT_KEY = r"HKEY_CURRENT_USER\Software\Wine\Fonts\Replacements"

# Without a window manager no window has the focus, so all are to look as the one that has it.
COLOUR_KEY = r"HKEY_CURRENT_USER\Control Panel\Colors"
COLOURS = {
    "InactiveTitle": "10 36 106",
    "GradientInactiveTitle": "10 36 106",
    "InactiveTitleText": "255 255 255",
}


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
WINDOWS_FONTS = ("MS Sans Serif", "MS UI Gothic", "Tahoma")
SCENES = {"en": ("tall", "short", "search", "failure")}
USUAL_SCENES = ("tall", "short")


def make_locale(name, folder):
    subprocess.run(
        ["localedef", "-i", name, "-f", "UTF-8", folder / f"{name}.UTF-8"],
        stdout=subprocess.DEVNULL,
        stderr=subprocess.DEVNULL,
    )


class Studio:
    """A display with a Wine prefix, in which the scenes are shown."""

    def __init__(self, program, scratch):
        self.program = program
        self.scratch = scratch
        self.session = scratch / "session"

    def __enter__(self):
        self.command("start")
        for colour, value in COLOURS.items():
            self.set(COLOUR_KEY, colour, value)
        # Without it the buttons of a caption show letters.
        shutil.copy(CAPTION_SIGNS, self.session / "prefix/drive_c/windows/Fonts")
        self.command("stop")
        self.command("start")
        return self

    def __exit__(self, *_):
        self.command("stop")

    def command(self, verb):
        subprocess.run([SESSION, verb, self.session], check=True)

    def set(self, key, name, value):
        """Sets a value of the registry."""
        subprocess.run(
            [SESSION, "run", self.session, "reg", "add", key, "/f", "/v", name, "/d", value],
            stdout=subprocess.DEVNULL,
            check=True,
        )

    def use_font(self, font):
        for replaced in WINDOWS_FONTS:
            self.set(FONT_KEY, replaced, font)

    def take(self, scene, locale, target):
        environment = {**os.environ, "LC_ALL": f"{locale}.UTF-8", "LOCPATH": str(self.scratch)}
        with subprocess.Popen(
            [SESSION, "run", self.session, self.program, scene],
            env=environment,
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            text=True,
        ) as shown:
            area = shown.stdout.readline().strip()
            if area:
                self.photograph(area, target)
            shown.stdin.close()
        if shown.returncode != 0:
            sys.exit(f"{target}: not taken")

    def photograph(self, area, target):
        display = ":" + (self.session / "display").read_text().strip()
        command = ["import", "-display", display, "-window", "root", "-crop", area, "+repage"]
        subprocess.run([*command, "-strip", target], check=True)


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    program, folder = sys.argv[1], Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as scratch, Studio(program, Path(scratch)) as studio:
        for name, language in LANGUAGES.items():
            make_locale(language.locale, studio.scratch)
            if language.font:
                studio.use_font(language.font)
            for scene in SCENES.get(name, USUAL_SCENES):
                target = folder / f"{scene}-{name}.png"
                studio.take(scene, language.locale, target)
                print(target)


main()
