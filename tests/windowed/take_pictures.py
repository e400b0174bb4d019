#!/usr/bin/env python3
"""Takes the pictures of the launcher's windows for the documentation, in several languages.

Usage: take_pictures.py PROGRAM FOLDER

PROGRAM is take_picture.exe. Needs Xvfb, Wine, the locale sources (package locales) and fonts of the
languages (fonts-wine, fonts-noto-core, fonts-noto-cjk).
"""

import os
import struct
import subprocess
import sys
import tempfile
import zlib
from pathlib import Path

SESSION = Path(__file__).resolve().parent / "session"
LANGUAGES = {"en": "en_US", "de": "de_DE", "ja": "ja_JP", "ar": "ar_SA", "he": "he_IL"}
SCENES = [(scene, language) for language in LANGUAGES for scene in ("tall", "short")] + [
    ("search", "en"),
    ("failure", "en"),
]


def png(ppm):
    """The picture of a PPM file as the bytes of a PNG file."""
    header, pixels = ppm.split(b"\n", 1)
    width, height = map(int, header.split()[1:3])
    rows = b"".join(
        b"\0" + pixels[start : start + 3 * width] for start in range(0, len(pixels), 3 * width)
    )

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    return (
        b"\x89PNG\r\n\x1a\n"
        + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
        + chunk(b"IDAT", zlib.compress(rows, 9))
        + chunk(b"IEND", b"")
    )


def make_locales(folder):
    for locale in LANGUAGES.values():
        subprocess.run(
            ["localedef", "-i", locale, "-f", "UTF-8", folder / f"{locale}.UTF-8"],
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )


def take(session, program, scene, language, scratch):
    environment = {**os.environ, "LC_ALL": f"{LANGUAGES[language]}.UTF-8", "LOCPATH": str(scratch)}
    picture = scratch / "picture.ppm"
    subprocess.run(
        [SESSION, "run", session, program, scene, f"Z:{picture}".replace("/", "\\")],
        env=environment,
        check=True,
    )
    return png(picture.read_bytes())


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    program, folder = sys.argv[1], Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as name:
        scratch = Path(name)
        make_locales(scratch)
        session = scratch / "session"
        subprocess.run([SESSION, "start", session], check=True)
        try:
            for scene, language in SCENES:
                target = folder / f"{scene}-{language}.png"
                target.write_bytes(take(session, program, scene, language, scratch))
                print(target)
        finally:
            subprocess.run([SESSION, "stop", session])


main()
