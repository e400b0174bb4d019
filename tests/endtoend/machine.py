"""The two places where a case runs: the host, and Windows as Wine plays it."""

import json
import os
import shutil
import subprocess
import sys
from pathlib import Path

WINE_ATTEMPTS = 3


def load(settings):
    machine = Windows if "runUnderWine" in settings else Host
    return machine(settings)


def read_settings(path):
    return json.loads(Path(path).read_text(encoding="utf-8"))


class Host:
    """Starts host programs, whose drives and registry come from the environment. The build folder is
    E:, which passes for a CD-ROM, so that no search enters it; the drives of a case are directories
    of its scratch area."""

    name = "host"

    def __init__(self, settings):
        self.settings = settings
        self.build = Path(os.path.realpath(settings["build"]))
        self.real_java = settings["java"]

    def windows_path(self, path):
        return "E:\\" + str(path.relative_to(self.build)).replace("/", "\\")

    def make_image(self, home):
        """A runtime image of `java.base` in a directory that has an empty `bin`, and more."""
        image = home.with_name("new_image")
        jlink = Path(self.settings["java"]).with_name("jlink")
        subprocess.run([jlink, "--add-modules", "java.base", "--strip-debug", "--no-man-pages",
                        "--output", image], check=True)
        shutil.copytree(image, home, symlinks=True, dirs_exist_ok=True)
        shutil.rmtree(image)

    def tool(self, key):
        return self.program(Path(os.path.realpath(self.settings[key])))

    def program(self, path):
        """The words that start a program."""
        return [*self.settings["runWith"].split(), str(path)]

    def started(self, words, _console):
        """Words for a run whose whole exit value counts."""
        return words

    def exit_value(self, code):
        return code

    def send_signal(self, process, _launcher, number):
        process.send_signal(number)

    def expected_exit(self, value):
        return value % 256

    def environment(self, root, drives):
        mapped = [f"{letter.upper()}={root}/{letter}" for letter in drives or ()]
        return {
            "CORVANE_DRIVES": ";".join([f"E={self.build},cdrom", *mapped]),
            "CORVANE_REGISTRY": f"{root}/registry.reg",
            "TMPDIR": f"{root}/tmp",
        }

    def open(self, root, drives):
        """Before the runs of a case."""

    def close(self, root, drives):
        """After them."""


class Windows(Host):
    """Starts Windows programs under Wine, whose prefix has one set of drives and one registry."""

    name = "windows"

    def __init__(self, settings):
        super().__init__(settings)
        self.real_java = settings["javaStandIn"]
        self.prefix = Path(settings["source"]) / "build/wine"
        self.wine = [settings["runUnderWine"]]

    def make_image(self, home):
        shutil.copy(self.real_java, home / "bin/java.exe")
        (home / "release").write_text('JAVA_VERSION="17"\n', encoding="utf-8")

    def program(self, path):
        return [*self.wine, self.windows_path(path)]

    def started(self, words, console):
        wine, *rest = words
        _, recorder = self.tool("exitValue")
        options = ["--console"] if console else []
        return [wine, recorder, self.windows_path(self.exit_file()), *options, *rest]

    def exit_file(self):
        # A plain name, however odd that of `root` is.
        return self.build / f"tests/endtoend/scratch/{os.getpid()}.exit"

    def exit_value(self, _code):
        file = self.exit_file()
        value = int(file.read_text(encoding="ascii")) if file.exists() else None
        file.unlink(missing_ok=True)
        return value

    def send_signal(self, _process, launcher, number):
        """To the process of the host that plays the launcher's; its name is the program's path."""
        name = self.windows_path(launcher).encode()
        for entry in Path("/proc").glob("[0-9]*/cmdline"):
            try:
                if entry.read_bytes().split(b"\0")[0] == name:
                    os.kill(int(entry.parent.name), number)
            except OSError:
                pass  # it has ended meanwhile

    def expected_exit(self, value):
        return value

    def environment(self, root, drives):
        script = Path(self.settings["source"]) / "tests/endtoend/windows/host_java.py"
        # Isolated and without site packages: half the time to start.
        words = [sys.executable, "-I", "-S", "-B", str(script), self.settings["java"]]
        words[0] = "\\\\?\\unix" + words[0]
        return {
            "CORVANE_HOST_JAVA": " ".join(f'"{word}"' for word in words),
        }

    def open(self, root, drives):
        for letter in drives or ():
            link = self.prefix / "drives" / letter
            link.unlink(missing_ok=True)
            link.symlink_to(root / letter)
        self.edit_registry(root, root / "registry.reg")

    def close(self, root, drives):
        for letter in drives or ():
            (self.prefix / "drives" / letter).unlink(missing_ok=True)
        if (root / "registry.reg").exists():
            removal = root / "registry-removal.reg"
            text = (root / "registry.reg").read_text(encoding="utf-8")
            keys = [line.replace("[", "[-", 1) for line in text.splitlines() if line[:1] == "["]
            removal.write_text("\n".join(["REGEDIT4", "", *keys, ""]), encoding="utf-8")
            self.edit_registry(root, removal)

    def edit_registry(self, root, file):
        if file.exists():
            words = [*self.wine, "regedit", "/S", self.windows_path(file)]
            environment = {**os.environ, **self.environment(root, ())}
            # Once in some hundred times Wine can't start a process: "Internal error".
            for _ in range(WINE_ATTEMPTS):
                if subprocess.run(words, cwd=root, env=environment).returncode == 0:
                    return
            sys.exit(f"the registry could not be edited by {words}")
