"""What a case directory says: its case.toml, checked and completed (README.md lists the keys)."""

import tomllib
from dataclasses import dataclass, field
from pathlib import Path

SHARED_TEXTS = Path(__file__).parent / "shared/texts.toml"


@dataclass
class Run:
    """One start of a program, and what must come of it. A text that is None isn't compared."""

    title: str = ""
    on: str = "both"
    launcher: str = "app/hello.exe"
    arguments: list = field(default_factory=list)
    command: list | None = None
    directory: str = ""
    environment: dict = field(default_factory=dict)
    input: str = ""
    unread: bool = False
    console: bool = False
    end: dict = field(default_factory=dict)
    file_limit: int | None = None
    link: dict = field(default_factory=dict)
    within: float = 60
    exit: int = 0
    stdout: str | None = ""
    stderr: str | None = ""
    log: str | None = None
    log_has: list = field(default_factory=list)
    log_count: dict = field(default_factory=dict)
    left: list = field(default_factory=list)
    contents: dict = field(default_factory=dict)
    same_bytes: list = field(default_factory=list)
    settles: bool = False


@dataclass
class Case:
    """What lies in the scratch directory before the runs, and the runs."""

    name: str
    directory: object
    purpose: str
    run: list
    homes: dict = field(default_factory=lambda: {"jdk": "real"})
    files: dict = field(default_factory=dict)
    links: dict = field(default_factory=dict)
    sparse: dict = field(default_factory=dict)
    pack: dict = field(default_factory=lambda: {"app/hello.exe": "hello.manifest"})
    damage: dict = field(default_factory=dict)
    sign: list = field(default_factory=list)
    plant: list = field(default_factory=list)
    drives: list | None = None
    folders: list = field(default_factory=lambda: [""])


def load(path):
    with open(path, "rb") as stream:
        return tomllib.load(stream)


def filled(value, texts):
    """An expectation with the named texts in their places. A text may name those in front of it."""
    if isinstance(value, str):
        for name, text in reversed(texts.items()):
            value = value.replace("$" + name, text)
    elif isinstance(value, list):
        value = [filled(each, texts) for each in value]
    elif isinstance(value, dict):
        value = {key: filled(each, texts) for key, each in value.items()}
    return value


def make_run(row, every, texts, build):
    """A run of this build, or None for one of the other. Keys under a build's name go last."""
    own = {**every, **row, **every.get(build, {}), **row.get(build, {})}
    texts = {**texts, **own.pop("texts", {})}
    for key in ("host", "windows"):
        own.pop(key, None)
    for key in ("stdout", "stderr", "log"):
        if own.get(key) is False:  # TOML has no null
            own[key] = None
    try:
        run = Run(**filled(own, texts))
    except TypeError as fault:
        raise ValueError(f"{row}: {fault}") from fault
    return run if run.on in ("both", build) else None


def read(directory, build, version):
    """The case in `directory` for a build, "host" or "windows", of a version. Raises for an unknown
    key."""
    table = load(directory / "case.toml")
    texts = {"RELEASE": version, **load(SHARED_TEXTS), **table.pop("texts", {})}
    every = table.pop("every", {})
    runs = [make_run(row, every, texts, build) for row in table.pop("run")]
    return Case(name=directory.name, directory=directory, run=[run for run in runs if run], **table)
