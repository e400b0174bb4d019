"""A display with a Wine prefix, set up for taking pictures of windows. Needs Xvfb, Wine and
ImageMagick (imagemagick), and Wine's fonts (fonts-wine)."""

import os
import shutil
import subprocess
from pathlib import Path

SESSION = Path(__file__).resolve().parents[2] / "tests/windowed/session"
CAPTION_SIGNS = "/usr/share/wine/fonts/marlett.ttf"

# Without a window manager no window has the focus, so all are to look as the one that has it.
COLOUR_KEY = r"HKEY_CURRENT_USER\Control Panel\Colors"
COLOURS = {
    "InactiveTitle": "10 36 106",
    "GradientInactiveTitle": "10 36 106",
    "InactiveTitleText": "255 255 255",
}


class Studio:
    """Serves for the time of a `with`. `scratch` is a folder that is the caller's."""

    def __init__(self, scratch):
        self.session = Path(scratch) / "session"
        self.temp = self.session / "prefix/drive_c/Java"
        self.lent = []

    def __enter__(self):
        self.command("start")
        for colour, value in COLOURS.items():
            self.set(COLOUR_KEY, colour, value)
        # Without it the buttons of a caption show letters.
        self.lend(CAPTION_SIGNS, "windows/Fonts/marlett.ttf")
        # A message may name what lies there, so the directory has a name fit for a picture.
        self.temp.mkdir()
        for variable in ("TEMP", "TMP"):
            self.set(r"HKEY_CURRENT_USER\Environment", variable, rf"C:\{self.temp.name}")
        self.command("stop")
        self.command("start")
        return self

    def __exit__(self, *_):
        self.command("stop")
        shutil.rmtree(self.temp)
        for file in self.lent:
            file.unlink()

    def lend(self, source, path):
        """Copies a file to drive C, which is the project's, for the time of the `with`."""
        file = self.session / "prefix/drive_c" / path
        file.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(source, file)
        self.lent.append(file)
        return file

    def command(self, verb):
        subprocess.run([SESSION, verb, self.session], check=True)

    def start(self, words, environment, **streams):
        """Starts a Windows program; what `environment` names is added to this process's own."""
        return subprocess.Popen(
            [SESSION, "run", self.session, *words], env={**os.environ, **environment}, **streams
        )

    def set(self, key, name, value):
        """Sets a value of the registry."""
        words = ["reg", "add", key, "/f", "/v", name, "/d", value]
        if self.start(words, {}, stdout=subprocess.DEVNULL).wait() != 0:
            raise RuntimeError(f"the registry refuses {key}: {name}")

    def photograph(self, target, *cut):
        """Takes a picture of the screen; `cut` says what of it, in ImageMagick's words."""
        display = ":" + (self.session / "display").read_text().strip()
        command = ["import", "-display", display, "-window", "root", *cut, "+repage", "-strip"]
        subprocess.run([*command, target], check=True)
        print(target)
