"""Starts launchers that keep their Java runtime below `room`, and tells of each start whether it
used the home and the unpacked files of the start before.

Usage: kept_runtime.py LAUNCHER_WORDS... NEWER_LAUNCHER
"""

import shutil
import subprocess
import sys
from pathlib import Path

OPTIONS = ["-console", "-cv:silent", "-cv:tempdir", "tmp"]
ROOM = Path("room/My App")


def start(words):
    return subprocess.Popen([*words, *OPTIONS], stdout=subprocess.PIPE, text=True)


def home_of(process):
    """The home that the application was started with, as it says, which lies in the room."""
    out, _ = process.communicate(timeout=60)
    homes = [line for line in out.splitlines() if "My App" in line]
    home = Path(homes[-1].replace("\\", "/")).name if homes else out
    runtimes = [path.name for path in ROOM.iterdir() if path.name != "lock" and
                path.suffix != ".uses"]
    if runtimes != [home]:
        print("left in the room:", runtimes, "and not", home)
    return home


def files_of(home):
    """What tells unpacked files from others of the same content."""
    return [path.stat().st_ctime_ns for path in sorted((ROOM / home).rglob("*"))]


def tell(what, former, home):
    files = files_of(home)
    words = ["same" if a == b else "other" for a, b in zip(former, (home, files))]
    print(f"{what}: {words[0]} home, {words[1]} files")
    return home, files


*launcher, newer = sys.argv[1:]
pair = [start(launcher), start(launcher)]
homes = [home_of(process) for process in pair]
state = tell("two at once", (homes[0], files_of(homes[0])), homes[1])
state = tell("again", state, home_of(start(launcher)))
(ROOM / state[0] / "release").write_text("cut", encoding="utf-8")
state = tell("behind a loss", state, home_of(start(launcher)))
tell("a newer one", state, home_of(start([*launcher[:-1], newer])))
shutil.rmtree("room")
