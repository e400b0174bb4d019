#!/usr/bin/env python3
"""Runs one end-to-end case and prints how it differs from what the case expects (README.md).

Usage: run_case.py SETTINGS CASE_DIRECTORY
"""

import os
import resource
import shlex
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import case_file
import machine as machines
import outcome
from stage import Stage

PATIENCE = 20  # seconds for what a run leaves to others
LAUNCHER_OPTIONS = ["-cv:log", "$SCRATCH\\log", "-cv:tempdir", "$SCRATCH\\tmp"]


def words_of(stage, run):
    """The command line of a run on this machine."""
    if run.command is None:
        words = [run.launcher, *LAUNCHER_OPTIONS, *run.arguments]
    else:
        words = list(run.command)
    program, *rest = [stage.fill(word) for word in words]
    if program == "python":
        # A script that is handed the words that start a launcher.
        script, launcher, *rest = rest
        script = Path(stage.machine.settings["source"]) / script
        return [sys.executable, "-B", str(script), *stage.machine.program(stage.root / launcher),
                *rest]
    start = stage.machine.tool("pack") if program == "corvane-pack" else stage.machine.program(
        stage.root / program)
    return stage.machine.started([*start, *rest], run.console)


def unread_pipe():
    """The writing end of a pipe that nobody reads."""
    read, write = os.pipe()
    os.close(read)
    return open(write, "wb")


def ask_to_end(stage, run, process):
    """Sends a run its signal, again and again, once the file is there that it says when."""
    when = stage.root / run.end["when"]
    number = signal.Signals["SIG" + run.end["signal"]]
    deadline = time.monotonic() + run.within
    while process.poll() is None and time.monotonic() < deadline:
        if when.exists():
            stage.machine.send_signal(process, stage.root / run.launcher, number)
        time.sleep(0.3)


def lay_link(stage, run, process):
    """Lays a link into what a run has made, once the file is there that it says when."""
    when = stage.root / run.link["when"]
    while not when.exists() and process.poll() is None:
        time.sleep(0.05)
    for directory in stage.root.glob(run.link["into"]):
        (directory / "link").symlink_to(stage.root / run.link["target"])


def limit_files(size):
    """What a run does in front of its start, so that a write beyond the limit fails."""
    def limit():
        signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))
    return None if size is None else limit


def start(stage, run, words):
    """Exit value and both streams of a run. The streams are files, so that a child that outlives
    the launcher isn't waited for."""
    own = {key: stage.fill(value) for key, value in run.environment.items()}
    with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
        with unread_pipe() as pipe:
            process = subprocess.Popen(words, cwd=stage.root / run.directory,
                                       env={**stage.environment(), **own}, stdin=subprocess.PIPE,
                                       stdout=pipe if run.unread else out, stderr=err,
                                       preexec_fn=limit_files(run.file_limit))
        if run.link:
            lay_link(stage, run, process)
        if run.end:
            ask_to_end(stage, run, process)
        process.communicate(stage.fill(run.input).encode(), timeout=run.within)
        texts = []
        for stream in (out, err):
            stream.seek(0)
            texts.append(stream.read().decode(errors="replace"))
    wrapped = run.command is None or run.command[0] != "python"
    code = process.returncode
    return stage.machine.exit_value(code) if wrapped else code, *texts


def check(stage, run):
    """The faults of one run, with its command line in front."""
    (stage.root / "log").unlink(missing_ok=True)
    (stage.root / run.directory).mkdir(exist_ok=True)
    before = outcome.paths(stage.root)
    words = words_of(stage, run)
    got = start(stage, run, words)
    deadline = time.monotonic() + (PATIENCE if run.settles else 0)
    while (found := outcome.faults(stage, run, got, before)) and time.monotonic() < deadline:
        time.sleep(0.1)
    return [f"=== {run.title}", f"$ {shlex.join(words)}", *found] if found else []


def check_in(stage):
    """The faults of all runs of a stage."""
    stage.prepare()
    stage.machine.open(stage.root, stage.case.drives)
    try:
        return [line for run in stage.case.run for line in check(stage, run)]
    finally:
        stage.machine.close(stage.root, stage.case.drives)


def main(settings_path, directory):
    machine = machines.load(machines.read_settings(settings_path))
    case = case_file.read(Path(directory), machine.name, machine.settings["version"])
    found = [line for folder in case.folders for line in check_in(Stage(machine, case, folder))]
    if found:
        print(case.purpose, *found, sep="\n")
    return 1 if found else 0


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
