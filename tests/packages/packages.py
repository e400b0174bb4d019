#!/usr/bin/env python3
"""Makes the released packages of the two builds, twice with the same bytes, unpacks those for this
machine into fresh folders, and takes a jar from `corvane-pack new` over `build` to a start with each.

Usage: packages.py SETTINGS HOST_BUILD WINDOWS_BUILD; the exit value is 77 if one isn't built.
"""

import filecmp
import os
import shutil
import subprocess
import sys
from pathlib import Path

PROJECT = Path(__file__).parents[2]
sys.path.insert(0, str(PROJECT / "tests/endtoend"))
import machine as machines  # noqa: E402

NAME = "corvane-launcher-*"


def make(builds, output):
    environment = {**os.environ, "SOURCE_DATE_EPOCH": "1700000000"}
    subprocess.run([PROJECT / "tools/package", output, *builds], check=True, env=environment,
                   stdout=subprocess.DEVNULL)


def unpacked(package, folder):
    """Unpacks a package; the folder in it that holds `bin`."""
    folder.mkdir()
    if package.suffix == ".deb":
        subprocess.run(["dpkg-deb", "-x", package, folder], check=True)
    else:
        shutil.unpack_archive(package, folder)
    return next(folder.rglob("bin")).parent


def run(words, folder, environment):
    done = subprocess.run(words, cwd=folder, env={**os.environ, **environment}, text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60)
    if done.returncode != 0:
        sys.exit(f"$ {' '.join(map(str, words))}\n{done.stdout}exit value {done.returncode}")
    return done.stdout


def use(machine, folder, root):
    """From the jar to the start of the application."""
    windows = machine.name == "windows"
    pack = machine.program(root / ("bin/corvane-pack.exe" if windows else "bin/corvane-pack"))
    shutil.copy(machine.build / "examples/hello/hello.jar", folder)
    java = folder / "jdk/bin/java.exe"
    java.parent.mkdir(parents=True)
    java.symlink_to(machine.real_java)
    (folder / "tmp").mkdir()
    environment = {**machine.environment(folder, None), "ASAN_OPTIONS": "detect_leaks=0"}
    run([*pack, "new", "hello.jar"], folder, environment)
    run([*pack, "build", "hello", *([] if windows else ["--for", "host"])], folder, environment)
    launcher = machine.program(folder / ("hello/hello.exe" if windows else "hello/hello"))
    home = machine.windows_path(folder / "jdk")
    options = ["-console", "-cv:silent", "-cv:javahome", home]
    printed = run([*launcher, *options, "one"], folder, environment)
    if "Hello, 2 argument(s)" not in printed:
        sys.exit(f"{root}: the application was not started:\n{printed}")


def main(settings_path, *builds):
    if not all(list(Path(build).glob("corvane-pack*")) for build in builds):
        print("left out: both builds are needed")
        return 77
    machine = machines.load(machines.read_settings(settings_path))
    scratch = machine.build / "packages"
    shutil.rmtree(scratch, ignore_errors=True)
    for output in ("one", "two"):
        make(builds, scratch / output)
    packages = sorted((scratch / "one").glob(NAME))
    for package in packages:
        assert filecmp.cmp(package, scratch / "two" / package.name, shallow=False), package
    assert len(packages) == 3, packages
    for package in packages:
        if (package.suffix == ".zip") == (machine.name == "windows"):
            folder = scratch / package.suffix[1:]
            use(machine, folder, unpacked(package, folder))
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
