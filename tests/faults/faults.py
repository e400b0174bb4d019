#!/usr/bin/env python3
"""Lets every call of every operation fail, one run for each, and looks at how the run ends.

Each run of case.toml (tests/endtoend/README.md has the keys) is recorded, and then carried out once
for every call that it made with that call failing, with every error that fits the operation, and
once with it failing from there on. A run must
- end within its patience, and not by a signal;
- give the exit value of the fault-free run, with the same output, or -1 and words;
- leave nothing in the temporary directory, unless what removes things fails for good or a file
  can't be closed;
- change nothing elsewhere.

Under Wine, where a run takes ten times as long, operations fail with fewer errors, from there on only
at their first call, and of more than 40 calls of one operation in a run 40 are taken evenly. All
workers share the drives of Wine's prefix, and each remembers a home under a name of its own.

Usage: faults.py [--seconds N] [--only OPERATION] [--workers N] SETTINGS LAUNCHER
With --seconds, as many runs as fit, taken evenly from all but those whose cleanup lasts a minute.
"""

import argparse
import dataclasses
import queue
import random
import subprocess
import sys
import threading
import time
from collections import Counter
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "endtoend"))

import case_file
import machine as machines
import outcome
from stage import Stage

PATIENCE = 100  # seconds; the cleanup at the end alone may take one minute

# The errors that Windows' documentation and experience know of, per kind of operation.
NOT_FOUND, DENIED, NO_MEMORY, SHARING, DISK_FULL, INTERRUPTED = 2, 5, 8, 32, 112, 995
FILE_ERRORS = [NOT_FOUND, DENIED, NO_MEMORY, SHARING, DISK_FULL]
OTHER_ERRORS = [DENIED, NO_MEMORY, INTERRUPTED]
WINE_FILE_ERRORS = [NOT_FOUND, SHARING, DISK_FULL]
WINE_OTHER_ERRORS = [NO_MEMORY]
WINE_CALLS = 40
FILE_OPERATIONS = {
    "openStream", "CreateFileA", "DeleteFileA", "CreateDirectoryA", "RemoveDirectoryA",
    "GetTempFileNameA", "SetFileAttributesA", "GetFileAttributesA", "GetFileAttributesExA",
    "FindFirstFileA", "FindNextFileA", "makeExecutable", "MoveFileExA", "CreateProcessA",
    "SetCurrentDirectoryA",
}

# Without these nothing can be removed.
REMOVAL = {
    "DeleteFileA", "RemoveDirectoryA", "FindFirstFileA", "FindNextFileA", "GetFileAttributesA",
    "SetFileAttributesA",
}
# What isn't closed is held by the launcher itself.
CLOSING = {"CloseHandle"}
# Without these an argument is empty, and what the application makes of that is its own affair; with
# no argument at all, not even the program's name, there is no run that could tell anything.
ARGUMENTS = {"WideCharToMultiByte", "CommandLineToArgvW", "LocalAlloc"}


@dataclasses.dataclass(frozen=True)
class Fault:
    scenario: int
    operation: str
    code: int
    call: int
    lasting: bool

    def order(self):
        return f"{self.operation} {self.code} {self.call}{'+' if self.lasting else ''}"


@dataclasses.dataclass
class Result:
    exit: int
    stdout: str
    words: str  # standard error and the log
    left: list
    changed: list


def contents(root):
    """All that lies below a directory with its bytes, but for what a run may leave there."""
    return {
        str(path.relative_to(root)): path.read_bytes() if path.is_file() else b""
        for path in root.rglob("*")
        if path.relative_to(root).parts[0] not in ("tmp", "log", "registry.reg", "extracted")
    }


def differing(before, after):
    return sorted(name for name in before.keys() | after.keys()
                  if before.get(name) != after.get(name))


def words_of(stage, run):
    """The command line of a run, which goes for its temporary files to the stage's directory."""
    program, *rest = run.command
    place = ["-cv:tempdir", "$SCRATCH\\tmp"] if under_wine(stage) else []
    return [*stage.machine.program(stage.root / program), *map(stage.fill, [*place, *rest])]


def under_wine(stage):
    return stage.machine.name == "windows"


def carry_out(stage, run, variables):
    """One run, beginning with an empty temporary directory and no log."""
    root = stage.root
    for name in ("log", "registry.reg"):
        (root / name).unlink(missing_ok=True)
    forget_home(stage)
    for name in ("tmp", "extracted"):
        subprocess.run(["rm", "-rf", root / name], check=True)
        (root / name).mkdir()
    before = contents(root)
    environment = {**stage.environment(), "XDG_STATE_HOME": f"{root}/tmp-state", **variables}
    done = subprocess.run(words_of(stage, run), cwd=root / run.directory, env=environment,
                          stdin=subprocess.DEVNULL, capture_output=True, timeout=PATIENCE)
    left = wait_for_rest(root)
    log = root / "log"
    words = done.stderr + (log.read_bytes() if log.exists() else b"")
    return Result(exit=done.returncode,
                  stdout=outcome.normal_form(done.stdout.decode(errors="replace"), stage),
                  words=outcome.normal_form(words.decode(errors="replace"), stage),
                  left=left, changed=differing(before, contents(root)))


def forget_home(stage):
    """Takes the remembered home from Wine's registry; the host's is a file."""
    if under_wine(stage):
        key, _, value = f"HKCU\\Software\\Corvane\\{stage.windows_root}".rpartition("\\")
        subprocess.run([*stage.machine.wine, "reg", "delete", key, "/v", value, "/f"],
                       capture_output=True)  # there may be none


def wait_for_rest(root):
    """What is left among the temporary files, once an embedded launcher had time to remove itself."""
    deadline = time.monotonic() + 3
    while (left := sorted(p.name for p in (root / "tmp").iterdir())) and time.monotonic() < deadline:
        time.sleep(0.02)
    return left


def failures_of(operation, count, wine):
    """Number of the call, error and whether it lasts, for an operation that is called so often."""
    errors = {(True, False): FILE_ERRORS, (True, True): WINE_FILE_ERRORS,
              (False, False): OTHER_ERRORS, (False, True): WINE_OTHER_ERRORS}
    step = max(1, count / WINE_CALLS) if wine else 1
    for call in (1 + int(number * step) for number in range(int(count / step))):
        for code in errors[operation in FILE_OPERATIONS, wine]:
            yield call, code, False
        if call == 1 or not wine:
            yield call, DENIED, True


def faults_of(stages, runs):
    """All faults, and what each scenario gives without one."""
    faults, models = [], []
    for number, run in enumerate(runs):
        stage = stages[0]
        record = stage.root.parent / f"record-{number}"
        record.unlink(missing_ok=True)
        wine = under_wine(stage)
        place = stage.machine.windows_path(record) if wine else str(record)
        models.append(carry_out(stage, run, {"CORVANE_RECORD": place}))
        calls = Counter(record.read_text(encoding="ascii").split())
        faults += [Fault(number, operation, code, call, lasting)
                   for operation, count in calls.items()
                   for call, code, lasting in failures_of(operation, count, wine)]
    return faults, models


def judge(fault, run, model, result):
    """What is wrong with a run; nothing if all is well."""
    failed = result.exit == 255
    wrong = []
    judged = fault.operation not in ARGUMENTS
    if judged and result.exit not in (run.exit, 255):
        wrong.append(f"exit value {result.exit}")
    if judged and failed and not (result.words or result.stdout.strip(". \n")):
        wrong.append("no word of it")
    excused = CLOSING | (REMOVAL if fault.lasting else set())
    if result.left and fault.operation not in excused:
        wrong.append(f"left {result.left}")
    if result.changed:
        wrong.append(f"changed {result.changed}")
    return wrong


def attempt(stage, runs, models, fault):
    run = runs[fault.scenario]
    try:
        result = carry_out(stage, run, {"CORVANE_FAULT": fault.order()})
    except subprocess.TimeoutExpired:
        return "endless", [f"no end within {PATIENCE} s"]
    wrong = judge(fault, run, models[fault.scenario], result)
    kind = "failed" if result.exit == 255 else "done"
    return ("WRONG" if wrong else kind), wrong


def work(stage, runs, models, jobs, deadline, report):
    while deadline is None or time.monotonic() < deadline:
        try:
            fault = jobs.get_nowait()
        except queue.Empty:
            return
        report(fault, *attempt(stage, runs, models, fault))


class Table:
    """Operation, calls tried, outcomes."""

    def __init__(self, runs, total):
        self.runs, self.total = runs, total
        self.rows, self.faults, self.done = {}, [], 0
        self.lock = threading.Lock()

    def add(self, fault, kind, wrong):
        with self.lock:
            self.done += 1
            self.rows.setdefault(fault.operation, Counter())[kind] += 1
            if wrong:
                text = f"{self.runs[fault.scenario].title}: {fault.order()}: {'; '.join(wrong)}"
                self.faults.append(text)
                print(text, flush=True)
            if sys.stdout.isatty():
                print(f"\r{self.done} of {self.total}", end="", flush=True)

    def print(self):
        kinds = ["done", "failed", "WRONG", "endless"]
        print(f"{'operation':28}" + "".join(f"{kind:>9}" for kind in ["runs", *kinds]))
        for operation, row in sorted(self.rows.items()):
            print(f"{operation:28}{row.total():9}" + "".join(f"{row[kind]:9}" for kind in kinds))
        print(f"{self.done} runs of {self.total}, {len(self.faults)} wrong")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--seconds", type=float)
    parser.add_argument("--only")
    parser.add_argument("--workers", type=int, default=6)  # most of a run is waiting
    parser.add_argument("settings")
    parser.add_argument("launcher")
    options = parser.parse_args()
    settings = machines.read_settings(options.settings) | {"launcher": options.launcher}
    machine = machines.load(settings)
    case = case_file.read(Path(__file__).parent, machine.name, settings["version"])
    stages = [Stage(machine, case, str(number)) for number in range(options.workers)]
    for stage in stages:
        stage.prepare()
    machine.open(stages[0].root, case.drives)
    try:
        return try_all(stages, case.run, options)
    finally:
        machine.close(stages[0].root, case.drives)


def try_all(stages, runs, options):
    """Prints the table. Gives the exit value."""
    faults, models = faults_of(stages, runs)
    for run, model in zip(runs, models):
        if model.exit != run.exit:
            sys.exit(f"{run.title}: {model}")
    faults = [fault for fault in faults if options.only in (None, fault.operation)
              and not (options.seconds and fault.lasting and fault.operation in REMOVAL | CLOSING)]
    random.Random(1).shuffle(faults)
    jobs = queue.SimpleQueue()
    for fault in faults:
        jobs.put(fault)
    deadline = None if options.seconds is None else time.monotonic() + options.seconds
    table = Table(runs, len(faults))
    workers = [threading.Thread(target=work, args=(stage, runs, models, jobs, deadline, table.add))
               for stage in stages]
    for worker in workers:
        worker.start()
    for worker in workers:
        worker.join()
    table.print()
    return 1 if table.faults else 0


if __name__ == "__main__":
    sys.exit(main())
