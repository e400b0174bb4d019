#!/usr/bin/env python3
"""Makes a Windows launcher of each of the jars below, by `corvane-pack new` and `build` alone, starts
it under Wine, and tells how long each step took and what was seen. The jars are those of Debian's
packages plantuml, ant, libhsqldb-java, libbatik-java, rhino, proguard-cli and
libsaxonhe-java; needs xdotool and what tools/pictures needs.

Usage: try_jars.py CORVANE_PACK LAUNCHER_EXE JAVA_STAND_IN FOLDER [NAME ...]

FOLDER takes the projects, which stay, and a picture of each window. NAME says which jars; all by
default. The exit value is 1 if one of them did not show what it must.
"""

import shutil
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass
from pathlib import Path

TOOLS = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(TOOLS / "pictures"))
from studio import Studio  # noqa: E402

HOST_JAVA = TOOLS.parent / "tests/endtoend/windows/host_java.py"
PATIENCE = 90
SETTLING = 4


@dataclass
class Trial:
    name: str
    jar: str  # and others that it needs, with blanks between them
    arguments: tuple = ()
    options: tuple = ()  # of `corvane-pack new`
    output: str = ""  # what it must print, or
    window: str = ""  # what the title of its window must hold


TRIALS = [
    Trial("plantuml", "/usr/share/plantuml/plantuml.jar", ("-version",), ("--tool",),
          output="PlantUML version"),
    Trial("ant", "/usr/share/java/ant.jar /usr/share/java/ant-launcher.jar", ("-version",),
          ("--tool",), output="Apache Ant(TM) version"),
    Trial("rhino", "/usr/share/java/js.jar", ("-e", "print('6 * 7 = ' + 6*7)"), ("--tool",),
          output="6 * 7 = 42"),
    Trial("proguard", "/usr/share/java/proguard.jar", (), ("--tool",), output="ProGuard, version"),
    Trial("saxon", "/usr/share/java/Saxon-HE.jar", ("-?",), ("--tool",), output="Saxon-HE"),
    Trial("hsqldb", "/usr/share/java/hsqldb.jar", window="Connect"),
    Trial("batik", "/usr/share/java/batik-all.jar /usr/share/java/xml-apis-ext.jar",
          window="Squiggle"),
]


def host_java():
    """The machine's own Java, and its version as in the name of its home."""
    java = Path(shutil.which("java")).resolve()
    properties = subprocess.run(
        [java, "-XshowSettings:properties", "-version"], capture_output=True, text=True
    ).stderr
    return java, properties.split("java.specification.version = ")[1].split()[0]


def timed(words, folder):
    """Runs a command that must succeed; its output and its seconds."""
    start = time.monotonic()
    run = subprocess.run(words, cwd=folder, capture_output=True, text=True)
    seconds = time.monotonic() - start
    print("$", *words)
    print(run.stdout + run.stderr, end="")
    if run.returncode != 0:
        sys.exit(f"exit value {run.returncode}")
    return seconds


def find_window(display, title):
    search = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", title],
                            env={"DISPLAY": display}, capture_output=True, text=True)
    return search.stdout.split()[-1:] if search.returncode == 0 else []


class Trials:
    def __init__(self, pack, launcher, folder, studio, environment):
        self.pack = pack
        self.launcher = launcher
        self.folder = folder
        self.studio = studio
        self.environment = environment
        self.display = ":" + (studio.session / "display").read_text().strip()

    def carry_out(self, trial):
        """A row of the table, and whether it showed what it must."""
        words = [self.pack, "new", *trial.jar.split(), "--name", trial.name, *trial.options]
        made = timed(words, self.folder)
        timed([self.pack, "check", trial.name, "--werror"], self.folder)
        built = timed([self.pack, "build", trial.name, "--stub", self.launcher], self.folder)
        program = self.folder / trial.name / f"{trial.name}.exe"
        seen, seconds = (self.watch if trial.window else self.read)(trial, program)
        print(f"| {trial.name} | {made:.1f} s | {built:.1f} s | {seconds:.1f} s | "
              f"{seen or 'NOTHING'} |\n", flush=True)
        return bool(seen)

    def start(self, trial, program, **streams):
        return self.studio.start([program, *trial.arguments], self.environment, **streams)

    def read(self, trial, program):
        """The line of output that it must print, and the seconds of the whole run."""
        start = time.monotonic()
        with self.start(trial, program, stdout=subprocess.PIPE, stderr=subprocess.STDOUT) as run:
            output = run.communicate(timeout=PATIENCE)[0].decode(errors="replace")
        lines = [line.strip() for line in output.splitlines() if trial.output in line]
        if not lines:
            print(output)
        return "".join(lines[:1]), time.monotonic() - start

    def watch(self, trial, program):
        """The title of its window, and the seconds until it is there. Takes a picture."""
        start = time.monotonic()
        run = self.start(trial, program, stderr=subprocess.DEVNULL)
        window = []
        while not window and run.poll() is None and time.monotonic() - start < PATIENCE:
            time.sleep(0.1)
            window = find_window(self.display, trial.window)
        seconds = time.monotonic() - start
        time.sleep(SETTLING)  # what it draws besides its frame, nobody tells
        self.studio.photograph(self.folder / f"{trial.name}.png", "-trim")
        if window:
            subprocess.run(["xdotool", "windowkill", *window], env={"DISPLAY": self.display})
        run.terminate()  # an application may go on without its windows
        return f"its window, {trial.name}.png" if window else "", seconds


def main():
    pack, launcher, stand_in, folder = (Path(word).resolve() for word in sys.argv[1:5])
    chosen = [trial for trial in TRIALS if trial.name in sys.argv[5:] or len(sys.argv) == 5]
    folder.mkdir(parents=True, exist_ok=True)
    for trial in chosen:
        shutil.rmtree(folder / trial.name, ignore_errors=True)
    java, version = host_java()
    words = [f"\\\\?\\unix{sys.executable}", "-I", "-S", "-B", HOST_JAVA, java]
    environment = {"CORVANE_HOST_JAVA": " ".join(f'"{word}"' for word in words)}
    with tempfile.TemporaryDirectory() as scratch, Studio(scratch) as studio:
        studio.lend(stand_in, f"Program Files/Java/jdk-{version}/bin/java.exe")
        trials = Trials(pack, launcher, folder, studio, environment)
        shown = [trials.carry_out(trial) for trial in chosen]
    sys.exit(0 if all(shown) else 1)


if len(sys.argv) < 5:
    sys.exit(__doc__)
main()
