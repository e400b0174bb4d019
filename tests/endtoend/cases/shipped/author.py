"""What an author does beside corvane-pack: adds lines to the manifest, or signs the program with the
key of this case. Usage: author.py LAUNCHER_WORDS... add|sign"""

import subprocess
import sys
from pathlib import Path


def add():
    with open("hello/hello.manifest", "a", encoding="utf-8") as manifest:
        manifest.write(Path("more").read_text(encoding="utf-8"))


def sign():
    for words in (["sign", "-certs", "certificate.pem", "-key", "key.pem", "-in", "bare-setup.exe",
                   "-out", "setup.exe"],
                  ["verify", "-CAfile", "certificate.pem", "-in", "setup.exe"]):
        subprocess.run(["osslsigncode", *words], check=True, stdout=subprocess.DEVNULL)


{"add": add, "sign": sign}[sys.argv[-1]]()
