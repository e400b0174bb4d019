#!/usr/bin/env python3
"""Lets happen to launchers what happens to programs: many at once, an end by force, a scanner's
hand on their files, odd children, a cut file, a clock that jumps, the end of the session.

A run must
- end within its patience;
- give the exit value of the application, which had its word, or -1 with a reason in the log;
- leave nothing among the temporary files, unless it was killed;
- change nothing elsewhere.

Usage: stress.py [--sample] [--only SITUATION] SETTINGS PROGRAMS
PROGRAMS is the directory that this directory's own programs were built in.
"""

import argparse
import contextlib
import errno
import fcntl
import itertools
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
from collections import Counter
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "endtoend"))

import case_file
import machine as machines
from stage import Stage

PATIENCE = 100  # seconds; the cleanup at the end alone may take one minute
SETTLING = 60  # seconds that a launcher's children have to end, and a copy to remove itself, idly
FAILED = 255
TEMPORARY = re.compile(r"LRE[0-9A-Fa-f]{1,4}\.(tmp|bat)")
NO_WORD = "no word of the application"
LEFT_OUT = "bytes are left out here"
DAMAGED = "This program is damaged or incomplete."
NUMBERS = itertools.count(1)


def below(directory):
    """All paths below a directory in which things come and go."""
    return [Path(folder, name) for folder, folders, files in os.walk(directory)
            for name in folders + files]


class Launch:
    """A started launcher. What it writes goes to a file, which its children may hold open."""

    def __init__(self, ground, launcher, *arguments, front=(), **variables):
        stage, number = ground.stage, next(NUMBERS)
        self.word = f"[word{number}]"
        self.log = ground.root / f"logs/{number}"
        self.extracts = "-cv:extract" in arguments
        program = stage.machine.program(ground.root / launcher)
        words = [*front, program[-1]] if front else program
        options = ["-cv:log", rf"$SCRATCH\logs\{number}", "-cv:tempdir", r"$SCRATCH\work\tmp"]
        words = [*words, *map(stage.fill, options), *arguments, self.word.strip("[]")]
        environment = {"ROOM": stage.fill(r"$SCRATCH\work\room"), **variables}
        self.out = tempfile.TemporaryFile()
        self.began = time.monotonic()
        self.process = subprocess.Popen(
            words, cwd=ground.root / "work/extracted", env={**stage.environment(), **environment},
            stdin=subprocess.DEVNULL, stdout=self.out, stderr=subprocess.STDOUT)
        self.seconds = None

    def end(self):
        """The exit value, or None if there is no end."""
        try:
            code = self.process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            self.process.kill()
            return None
        self.seconds = time.monotonic() - self.began
        return code & 255

    def texts(self):
        self.out.seek(0)
        log = self.log.read_bytes() if self.log.exists() else b""
        return (self.out.read() + log).decode(errors="replace")

    def faults(self, expected, mayFail):
        """What is wrong with its end."""
        code = self.end()
        if code is None:
            return [f"no end within {PATIENCE} s"]
        texts = self.texts()
        if code == FAILED and mayFail:
            return [] if "ERROR: " in texts else ["-1, and no word of it"]
        if code != expected:
            return [f"exit value {code}, not {expected}: {texts[-2000:]}"]
        return [] if self.extracts or self.word in texts else [NO_WORD]


class Ground:
    """The directory of all launchers. Only what lies in `work`, `logs` and the registry changes."""

    def __init__(self, machine, case, options):
        self.stage = Stage(machine, case, options.only or "all")
        self.programs, self.sample = options.programs, options.sample
        self.root = self.stage.root
        self.stage.prepare()
        self.registry = (self.root / "registry.reg").read_bytes()
        (self.root / "logs").mkdir()
        self.clear()
        self.before = self.contents()

    def clear(self):
        shutil.rmtree(self.root / "work", ignore_errors=True)
        for name in ("tmp", "room", "extracted"):
            (self.root / "work" / name).mkdir(parents=True)
        (self.root / "registry.reg").write_bytes(self.registry)

    def start(self, launcher, *arguments, **options):
        return Launch(self, launcher, *arguments, **options)

    def contents(self):
        found = {}
        for path in below(self.root):
            if path.relative_to(self.root).parts[0] not in ("work", "logs", "registry.reg"):
                status = path.lstat()
                found[str(path.relative_to(self.root))] = (status.st_size, status.st_mtime_ns)
        return {name: status for name, status in found.items() if not (self.root / name).is_dir()}

    def left(self):
        """What lies among the temporary files."""
        tmp = self.root / "work/tmp"
        return sorted(str(path.relative_to(tmp)) for path in below(tmp))

    def busy(self):
        """The processes that have to do with this directory."""
        windows = self.stage.machine.name == "windows"
        name = self.stage.windows_root if windows else str(self.root)
        found = []
        for process in Path("/proc").glob("[0-9]*"):
            with contextlib.suppress(OSError):
                ours = name.encode() in (process / "cmdline").read_bytes()
                if ours and windows == ("wine" in os.readlink(process / "exe")):
                    found.append(int(process.name))
        return found

    def await_children(self):
        """Those of a launcher that was ended by force. One that it was just starting never runs."""
        self.settle(lambda: not self.busy())
        for process in self.busy():
            os.kill(process, signal.SIGKILL)

    def settle(self, condition):
        deadline = time.monotonic() + SETTLING
        while not condition() and time.monotonic() < deadline:
            time.sleep(0.02)

    def faults(self, kept=None):
        """What is wrong with the directory behind a run; `kept` is what it leaves alone."""
        kept = kept or []
        self.settle(lambda: self.left() == kept)
        after, found = self.contents(), []
        if self.left() != kept:
            found.append(f"among the temporary files there is {self.left()}, not {kept}")
        changed = sorted(name for name in self.before.keys() | after.keys()
                         if self.before.get(name) != after.get(name))
        found += [f"among the kept there is {path}" for path in below(self.root / "work/room")
                  if path.suffix in (".part", ".old") or path.stem == "unpack-java"]
        return found + ([f"changed {changed}"] if changed else [])


class Tally(Counter):
    """Outcomes of a situation's runs."""

    def __init__(self, name):
        super().__init__()
        self.name = name

    def add(self, outcome, faults, what=""):
        self["WRONG" if faults else outcome] += 1
        if faults:
            print(f"{self.name}: {what}: {'; '.join(faults)}", flush=True)

    def judge(self, launch, expected, what, ground=None, mayFail=True):
        """One run: its end and, if no other runs, the directory behind it."""
        faults = launch.faults(expected, mayFail) + (ground.faults() if ground else [])
        self.add("failed and said so" if launch.process.returncode & 255 == FAILED else "right",
                 faults, what)


def front_end(number):
    return ["-console"] if number % 2 else ["-cv:silent"]


WORKS = [("app/all.exe",), ("app/kept.exe",), ("app/all.exe", "-cv:extract")]


def at_once(ground, tally):
    """50 at once in one temporary directory, with one registry and one place for a runtime."""
    for launcher in ("app/all.exe", "app/kept.exe"):
        launches = [ground.start(launcher, *front_end(i), "--exit", str(i + 1))
                    for i in range(3 if ground.sample else 50)]
        for i, launch in enumerate(launches):
            tally.judge(launch, i + 1, launcher, mayFail=False)
        if faults := ground.faults():
            tally.add("", faults, launcher)


def killed(ground, tally):
    """Ended by force at a random moment, and the run behind that.

    The next run does its work, and leaves alone the temporary files, which may be another
    launcher's; but an unfinished runtime in the place where it is kept goes."""
    moments = random.Random(1)
    spans = {}
    for i in range(2 if ground.sample else 200):
        work = WORKS[0 if ground.sample else i % len(WORKS)]
        if work not in spans:
            ground.clear()
            model = ground.start(*work)
            tally.judge(model, 0, f"{work} unharmed", ground)
            spans[work] = model.seconds
        ground.clear()
        launch = ground.start(*work)
        time.sleep(moments.uniform(0, spans[work]))
        launch.process.kill()
        code = launch.process.wait()
        ground.await_children()
        left = ground.left()
        faults = [f"left {name}" for name in left if not TEMPORARY.match(name)]
        tally.add("killed" if code < 0 else "ended before", faults, str(work))
        following = ground.start(*work)
        faults = following.faults(0, mayFail=False) + ground.faults(left)
        tally.add("right behind a killed one", faults, str(work))


@contextlib.contextmanager
def hand_of_host(ground):
    """Holds each new file for a second, as far as launchers heed that."""
    stop = threading.Event()

    def hold():
        held, seen = [], set()
        while not stop.is_set():
            with contextlib.suppress(OSError):  # files come and go
                for path in set(below(ground.root / "work")) - seen:
                    if path.is_file():
                        seen.add(path)
                        held.append((time.monotonic(), open(path, "rb")))
                        fcntl.flock(held[-1][1], fcntl.LOCK_EX | fcntl.LOCK_NB)
            while held and time.monotonic() - held[0][0] > 1:
                held.pop(0)[1].close()
            time.sleep(0.002)

    thread = threading.Thread(target=hold)
    thread.start()
    try:
        yield
    finally:
        stop.set()
        thread.join()


@contextlib.contextmanager
def hand_of_windows(ground):
    stop = ground.root / "work/stop"
    words = ground.stage.machine.program(ground.programs / "stress_hand.exe")
    paths = [ground.stage.fill(rf"$SCRATCH\work{name}") for name in ("", r"\stop")]
    with subprocess.Popen([*words, *paths], env=ground.stage.environment()) as process:
        try:
            yield
        finally:
            stop.touch()
            process.wait(PATIENCE)


def scanned(ground, tally):
    """Each new file is held by somebody else for a second."""
    hand = hand_of_host if ground.stage.machine.name == "host" else hand_of_windows
    for i in range(2 if ground.sample else 30):
        ground.clear()
        work = WORKS[i % len(WORKS)]
        with hand(ground):
            tally.judge(ground.start(*work, *front_end(i // 3)), 0, str(work), ground)


# What a child does, its exit value, and between how many seconds its launcher ends.
CHILDREN = [
    ("closes its outputs and lives on", ["--close", "all", "--sleep", "1500"], 0, 1.5, 60),
    ("leaves a grandchild with the pipes", ["--leave", "--sleep 15000", "--exit", "5"], 5, 0, 12),
    ("dies by a signal", ["--abort", "now"], None, 0, 60),
    ("writes 100 MB to its output", ["--write", "100000000", "--exit", "5"], 5, 0, 95),
    ("writes 100 MB to its errors", ["--write-err", "100000000", "--exit", "5"], 5, 0, 95),
]


def children(ground, tally):
    """Children that do odd things, collected and not."""
    aborted = 134 if ground.stage.machine.name == "host" else 3
    for title, arguments, exit, least, most in CHILDREN[:2] if ground.sample else CHILDREN:
        for options in (["-console"], ["-cv:silent"]):
            ground.clear()
            launch = ground.start("app/plain.exe", *options, *arguments)
            faults = launch.faults(aborted if exit is None else exit, mayFail=False)
            # Of a child that closed or lost its output, the words are lost with it.
            faults = [fault for fault in faults if fault != NO_WORD or "100" in title]
            if not least <= launch.seconds <= most:
                faults.append(f"{launch.seconds} s")
            if "100" in title and options != ["-console"] and LEFT_OUT not in launch.texts():
                faults.append("no word of what is left out")
            tally.add("right", faults + ground.faults(), title)


def needed_bytes(ground, launcher):
    """Where the last embedded file ends that `launcher` needs behind its first child."""
    content = (ground.root / launcher).read_bytes()
    files = [(ground.root / name).read_bytes()
             for name in ("app/inner.exe", "examples/hello/hello.jar")]
    return max(content.rindex(file) + len(file) for file in files)


def cut_file(ground, path, size):
    """The host lets nobody cut a program that runs, but it can be replaced by a cut one."""
    if ground.stage.machine.name == "windows":
        os.truncate(path, size)
        return
    try:
        os.truncate(path, size)
        raise AssertionError("a running program could be cut")
    except OSError as error:
        assert error.errno == errno.ETXTBSY, error
    shutil.copy(path, path.with_suffix(".cut"))
    os.truncate(path.with_suffix(".cut"), size)
    path.with_suffix(".cut").replace(path)


def cut(ground, tally):
    """The launcher's file cut while its first child runs, in front of the second."""
    launcher, size = ground.root / "app/twice.exe", random.Random(1)
    whole, status = launcher.read_bytes(), launcher.stat()
    program, needed = (ground.root / "app/bare.exe").stat().st_size, needed_bytes(ground, launcher)
    for i in range(1 if ground.sample else 30):
        ground.clear()
        left = [program, needed, len(whole) - 1][i] if i < 3 else size.randint(program, len(whole))
        work = r"$SCRATCH\work"
        words = [f"--touch {work}\\started", f"--wait-for {work}\\go"]
        arguments = [ground.stage.fill(word) for pair in words for word in pair.split(" ", 1)]
        launch = ground.start("app/twice.exe", *front_end(i), *arguments)
        ground.settle((ground.root / "work/started").exists)
        cut_file(ground, launcher, left)
        (ground.root / "work/go").touch()
        faults = launch.faults(0 if left >= needed else FAILED, mayFail=left < needed)
        if left < needed and DAMAGED not in launch.texts():
            faults.append("no word of the damage")
        launcher.unlink()
        launcher.write_bytes(whole)
        launcher.chmod(0o755)
        os.utime(launcher, ns=(status.st_atime_ns, status.st_mtime_ns))
        tally.add("right" if left >= needed else "failed and said so", faults + ground.faults(),
                  f"{left} bytes of {len(whole)}")


# What waits by the clock, its exit value, and between how many seconds its launcher ends.
TIMED = [
    ("app/limited.exe", [], {}, 0, 3, 12),
    ("app/plain.exe", ["--sleep", "2000"], {}, 0, 2, 12),
    ("app/kept.exe", [], {"held": 4}, 0, 4, 20),
    ("app/all.exe", [], {"CORVANE_FAULT": "GetTempFileNameA 5 1+"}, FAILED, 10, 20),
]


@contextlib.contextmanager
def lock_of_the_room(ground, seconds):
    """Held by another for so long."""
    (ground.root / "work/room/kept").mkdir()
    with open(ground.root / "work/room/kept/lock", "w") as file:
        fcntl.flock(file, fcntl.LOCK_EX)
        release = threading.Timer(seconds, fcntl.flock, (file, fcntl.LOCK_UN))
        release.start()
        yield
        release.join()


def clock(ground, tally):
    """The time of day goes forth and back whenever a launcher looks at it."""
    for launcher, arguments, plan, exit, least, most in TIMED[:1] if ground.sample else TIMED:
        for jump in ("-3600",) if ground.sample else ("-3600", "3600", "-86400"):
            ground.clear()
            held = plan.get("held", 0)
            faults = {name: value for name, value in plan.items() if name != "held"}
            with lock_of_the_room(ground, held) if held else contextlib.nullcontext():
                launch = ground.start(launcher, "-console", *arguments, CORVANE_CLOCK=jump, **faults)
                wrong = launch.faults(exit, mayFail=exit == FAILED)
            if not least <= launch.seconds <= most:
                wrong.append(f"{launch.seconds} s")
            tally.add("right", wrong + ground.faults(), f"{launcher}, {jump} s")


def session_ends(ground, tally):
    """The session ends at moments of a run with windows."""
    program = ground.stage.machine.program(ground.programs / "stress_end_session.exe")
    arguments = ["-cv:silent", "--sleep", "1000", "--exit", "7"]
    moments = [700]
    if not ground.sample:
        model = ground.start("app/all.exe", *arguments)
        tally.judge(model, 7, "unharmed", ground)
        moments = [int(100 * model.seconds * i) for i in range(10)]
    for moment in moments:
        ground.clear()
        launch = ground.start("app/all.exe", *arguments, front=[*program, str(moment)])
        tally.judge(launch, 7, f"after {moment} ms", ground)


def make_image(machine, home):
    """A runtime image that is none, as nothing but its `java` is started."""
    suffix = ".exe" if machine.name == "windows" else ""
    shutil.copy(machine.settings["fakeJava"], home / f"bin/java{suffix}")
    (home / "release").write_text('JAVA_VERSION="17"\n', encoding="utf-8")


def carry_out(situation, ground):
    """Prints a row of the table, and gives the number of runs that were wrong."""
    tally = Tally(situation.__name__)
    began = time.monotonic()
    ground.clear()
    situation(ground, tally)
    outcomes = ", ".join(f"{count} {outcome}" for outcome, count in tally.items())
    print(f"| {situation.__doc__.splitlines()[0]} | {ground.stage.machine.name} | {tally.total()} |"
          f" {outcomes} | {time.monotonic() - began:.0f} s |", flush=True)
    return tally["WRONG"]


def stage_for(situations, options, launcher=None):
    """Carries out situations on one ground, with a launcher of their own if need be."""
    settings = machines.read_settings(options.settings)
    machine = machines.load({**settings, "launcher": launcher or settings["launcher"]})
    machine.make_image = lambda home: make_image(machine, home)
    case = case_file.read(Path(__file__).parent, machine.name, machine.settings["version"])
    wanted = [situation for situation in situations if options.only in (None, situation.__name__)]
    if not wanted:
        return 0
    ground = Ground(machine, case, options)
    machine.open(ground.root, None)
    try:
        return sum(carry_out(situation, ground) for situation in wanted)
    finally:
        machine.close(ground.root, None)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--sample", action="store_true")
    parser.add_argument("--only")
    parser.add_argument("settings")
    parser.add_argument("programs", type=Path)
    options = parser.parse_args()
    options.programs = options.programs.resolve()
    if "runUnderWine" in machines.read_settings(options.settings):
        return stage_for([at_once, killed, scanned, cut, session_ends, children], options) > 0
    wrong = stage_for([clock], options, options.programs / "stress_clock")
    return wrong + stage_for([at_once, killed, scanned, cut, children], options) > 0


if __name__ == "__main__":
    sys.exit(main())
