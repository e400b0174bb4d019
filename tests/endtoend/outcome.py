"""What a run said and left, in a form that is the same on every machine, and its comparison."""

import contextlib
import difflib
import re
from collections import Counter

# The index that a run lists in its log, which depends on the launcher's size.
INDEX_ENTRY = re.compile(
    r"file type: \d+\n  file id: \d+\n  length: \d+\n  offset: \d+\n  file name: .*\n")

# Where a text varies, and what stands there instead. Progress is a row of dots, whose number
# depends on how a child's output arrives.
VARYING = [
    (INDEX_ENTRY, ""),
    (re.compile(r"\bLRE[0-9A-Fa-f]{1,4}\.(tmp|bat)\b"), "LRE"),
    (re.compile(r"^\.+|(?<=Directory)\.+|\.{4,}", re.MULTILINE), "."),
    (re.compile(r"has \d+ characters"), "has $LENGTH characters"),
    (re.compile(r"^(java\.version = ).*$", re.MULTILINE), r"\1$VERSION"),
    (re.compile(r'(?<="time":")[^"]*'), "$TIME"),
    (re.compile(r'(?<="system":")[^"]*'), "$SYSTEM"),
    (re.compile(r'(?<="locale":")[^"]+'), "$LOCALE"),
    (re.compile(r'(?<="consoleCodePage":)\d+'), "$PAGE"),
    (re.compile(r'(?<="milliseconds":)\d+'), "$MILLISECONDS"),
]

# Where Wine has words of its own for the system's errors.
WINE_WORDS = [
    (re.compile(r"File not found\."), "The system cannot find the file specified."),
    (re.compile(r"Access denied\."), "Access is denied."),
    (re.compile(r"Bad EXE format for (.*)\.$", re.MULTILINE),
     r"\1 is not a valid Win32 application."),
]


def normal_form(text, stage):
    """`text` without what differs from run to run and from build to build."""
    # Also those that the system's own words bring along, in front of the stream's.
    text = re.sub(r"\r+\n", "\n", text)
    words = WINE_WORDS if stage.machine.name == "windows" else []
    windows_root = stage.windows_root
    folders = {windows_root: "$SCRATCH", windows_root.replace("\\", r"\\"): "$SCRATCH",
               str(stage.root): "$SCRATCH", stage.jdk: "$JDK"}
    for varying, name in folders.items():
        text = text.replace(varying, name)
    for pattern, replacement in words + VARYING:
        text = pattern.sub(replacement, text)
    return text


def paths(root):
    """All that lies below `root`, but for the log."""
    return {str(path.relative_to(root)) for path in root.rglob("*")} - {"log"}


def difference(what, expected, got):
    """A unified diff, or nothing for equal texts."""
    if expected == got:
        return []
    lines = difflib.unified_diff(expected.splitlines(), got.splitlines(), f"{what} expected",
                                 f"{what} got", lineterm="")
    return list(lines) or [f"{what}: the line ends differ: {expected!r}, {got!r}"]


def missing_lines(expected, log):
    """The first line of `expected` that isn't in the log behind those before it."""
    rest = iter(log.splitlines())
    for line in expected:
        if line not in rest:
            return [f"the log lacks, in this place: {line}", "--- log", *log.splitlines()]
    return []


def left_behind(stage, before):
    """Names of what came into being and (in front of a minus sign) of what is gone, and the texts
    of the new files; files of the same varying name are told apart by their text alone."""
    after = paths(stage.root)
    names = [normal_form(name, stage) for name in after - before]
    names += ["-" + normal_form(name, stage) for name in before - after]
    texts = {}
    for name in sorted(after - before):
        path = stage.root / name
        with contextlib.suppress(FileNotFoundError):  # a batch file may remove itself meanwhile
            if not path.is_file():
                continue
            text = normal_form(path.read_bytes().decode(errors="replace"), stage)
            texts.setdefault(normal_form(name, stage), []).append(text)
    return sorted(names), texts


def faults(stage, run, got, before):
    """Lines that say where a run differs from what is expected; none if it doesn't."""
    exit_value, out, err = got
    log_file = stage.root / "log"
    log = normal_form(log_file.read_bytes().decode() if log_file.exists() else "", stage)
    left, texts = left_behind(stage, before)
    found = []
    expected_exit = stage.machine.expected_exit(run.exit)
    if exit_value != expected_exit:
        found.append(f"exit value: expected {expected_exit}, got {exit_value}")
    for what, expected, text in (("stdout", run.stdout, out), ("stderr", run.stderr, err),
                                 ("log", run.log, log)):
        if expected is not None:
            found += difference(what, expected, normal_form(text, stage))
    found += missing_lines(run.log_has, log)
    found += [f"the log holds {log.count(text)} times, not {wanted}: {text}"
              for text, wanted in run.log_count.items() if log.count(text) != wanted]
    found += difference("left", "\n".join(sorted(run.left)), "\n".join(left))
    if len({(stage.root / name).read_bytes() for name in run.same_bytes}) > 1:
        found.append(f"these differ: {run.same_bytes}")
    for name, expected in run.contents.items():
        wanted = [expected] if isinstance(expected, str) else expected
        if Counter(wanted) != Counter(texts.get(name, [])):
            found += difference(name, "\n".join(wanted), "\n".join(texts.get(name, [])))
    return found
