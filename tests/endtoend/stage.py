"""The scratch directory of a case: its files, JVM homes and packed launchers."""

import os
import shutil
import subprocess
from pathlib import Path

from tag_files import text_of

HERE = Path(__file__).parent
TEXT_SUFFIXES = {".tag", ".script", ".launch", ".jvm", ".manifest", ".reg", ".sp", ".ja", ".cp",
                 ".cp1", ".cp2", ".lst", ""}


class Stage:
    """A directory of the case's own below the build folder, made afresh."""

    def __init__(self, machine, case, folder):
        self.machine = machine
        self.case = case
        self.root = machine.build / "tests/endtoend/scratch" / case.name / folder
        self.windows_root = machine.windows_path(self.root)
        self.jdk = machine.settings["java"].removesuffix("/bin/java")

    def fill(self, text):
        """Input text with the scratch directory's Windows path in the place of $SCRATCH, and the
        home of the JDK in the place of $JDK."""
        return text.replace("$SCRATCH", self.windows_root).replace("$JDK", self.jdk)

    def prepare(self):
        """Everything that the case names; a case that runs nothing here needs nothing."""
        if not self.case.run:
            return
        shutil.rmtree(self.root, ignore_errors=True)
        for folder in ("tmp", "home", "app"):
            (self.root / folder).mkdir(parents=True)
        for folder in ("examples/hello", "jvms"):
            shutil.copytree(self.machine.build / folder, self.root / folder)
        self.copy_inputs(HERE / "shared")
        self.copy_inputs(self.case.directory)
        for name, content in self.case.files.items():
            self.write_file(name, content)
        for name, size in self.case.sparse.items():
            with open(self.root / name, "wb") as file:
                file.truncate(size)
        for name, kind in self.case.homes.items():
            self.make_home(self.root / name, kind)
        for name, target in self.case.links.items():
            (self.root / name).parent.mkdir(parents=True, exist_ok=True)
            (self.root / name).symlink_to(self.root / target)
        shutil.copy(self.machine.settings["installer"], self.root / "installer.exe")
        shutil.copy(self.machine.settings["launcher"], self.root / "app/bare.exe")
        if "face" in self.machine.settings:
            shutil.copy(self.machine.settings["face"], self.root / "face.exe")
        shutil.copy(self.machine.build / "java/verify.jar", self.root)
        for name in self.case.plant:
            shutil.copy(self.machine.settings["planted"], self.root / name)
        for launcher, manifest in self.case.pack.items():
            self.pack(manifest, launcher)
        for launcher, damage in self.case.damage.items():
            self.damage(launcher, **damage)
        for launcher in self.case.sign:
            self.sign(launcher)

    def write_file(self, name, content):
        self.write(self.root / name, text_of(name, content).encode())

    def copy_inputs(self, folder):
        for path in folder.rglob("*"):
            if path.is_file() and path.suffix != ".toml":
                self.write(self.root / path.relative_to(folder), path.read_bytes())

    def write(self, path, content):
        path.parent.mkdir(parents=True, exist_ok=True)
        if path.suffix in TEXT_SUFFIXES:
            content = self.fill(content.decode()).encode()
        path.write_bytes(content)

    def make_home(self, home, kind):
        """A directory that holds bin/java.exe: the real one; a directory or a damaged program of
        that name; or the stand-in of the unit tests, which does what `kind` says."""
        java = home / "bin/java.exe"
        java.parent.mkdir(parents=True)
        if kind == "directory":
            java.mkdir()
        elif kind == "damaged":
            java.write_bytes(b"MZ, and nothing behind it\n")
            java.chmod(0o755)
        elif kind == "image":
            self.machine.make_image(home)
        elif kind == "real":
            java.symlink_to(self.machine.real_java)
        elif kind == "code_pages":
            java.symlink_to(self.machine.settings["codePages"])
        else:
            java.symlink_to(self.machine.settings["fakeJava"])
            (home / "behaviour").write_text(kind + "\n", encoding="utf-8")

    def pack(self, manifest, launcher):
        """`manifest` names one, or holds its tags."""
        if isinstance(manifest, dict):
            tags, manifest = manifest, f"{Path(launcher).stem}.manifest"
            self.write_file(manifest, tags)
        (self.root / launcher).parent.mkdir(exist_ok=True)
        words = [*self.machine.tool("pack"), "build", manifest, "-o", launcher,
                 "--stub", "app/bare.exe", "--no-check"]
        subprocess.run(words, cwd=self.root, env=self.environment(), check=True,
                       stdout=subprocess.DEVNULL)

    def damage(self, launcher, at=0, bytes="", cut=0, sealed=False):
        """Overwrites bytes of a launcher, at a distance from the start of its index; if that is
        negative, from the end of the file. Cuts bytes off its end. Unless it stays sealed, the
        record by which it would notice is emptied first."""
        content = bytearray((self.root / launcher).read_bytes())
        record = content.index(b"corvane packed record 1\0") + 24
        if not sealed:
            content[record:record + 8] = b"\0" * 8
        index = int.from_bytes(content[-8:-4], "big")
        start = at + (index if at >= 0 else len(content))
        content[start:start + len(bytes) // 2] = bytearray.fromhex(bytes)
        (self.root / launcher).write_bytes(content[:len(content) - cut])

    def sign(self, launcher):
        """Signs a Windows launcher with a certificate of its own making."""
        key, certificate = self.root / "key.pem", self.root / "certificate.pem"
        request = "openssl req -x509 -newkey rsa:2048 -nodes -days 1 -subj /CN=test"
        bare, signed = self.root / launcher, self.root / "signed"
        for words in ([*request.split(), "-keyout", key, "-out", certificate],
                      ["osslsigncode", "sign", "-certs", certificate, "-key", key, "-in", bare,
                       "-out", signed]):
            subprocess.run(words, check=True, capture_output=True)
        signed.replace(bare)

    def environment(self):
        """A clean one; what sanitizers are told stays."""
        kept = {key: value for key, value in os.environ.items() if key.endswith("SAN_OPTIONS")}
        return {
            "PATH": "/usr/local/bin:/usr/bin:/bin",
            "HOME": str(self.root / "home"),
            "LC_ALL": "C.UTF-8",
            **kept,
            **self.machine.environment(self.root, self.case.drives),
        }
