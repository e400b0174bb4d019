#!/usr/bin/env python3
"""Writes the JVM files: `make_jvms.py FOLDER` fills FOLDER/windows and FOLDER/linux.

To add a version, add its number to VERSIONS; to add a place where a vendor puts its JVMs, add a
line to a table. In a place {v} stands for the version.
"""

import sys
from pathlib import Path

VERSIONS = [25, 21, 17, 11, 8]  # newest first, as `any` tries them
VERSIONS_WITH_32_BITS = [21, 17, 11, 8]

# The values below HKEY_LOCAL_MACHINE\SOFTWARE that hold a home, by vendor.
REGISTRY_OF_8 = [
    r"JavaSoft\Java Runtime Environment\1.8\JavaHome",
    r"JavaSoft\Java Development Kit\1.8\JavaHome",
]
REGISTRY_OF_LATER = [
    r"JavaSoft\JDK\{v}\JavaHome",
    r"JavaSoft\JRE\{v}\JavaHome",
]
REGISTRY_OF_ALL = [
    r"Azul Systems\Zulu\zulu-{v}\InstallationPath",
    r"Azul Systems\Zulu\zulu-{v}-jre\InstallationPath",
]

# The directories below \Program Files; later versions of the first vendor have 64 bits alone.
PROGRAMS_OF_8 = [
    r"Java\latest\jre-1.8",
    r"Java\latest\jdk-1.8",
    r"Java\jre-1.8",
    r"Java\jdk-1.8",
    r"Java\jre8",
]
PROGRAMS_OF_LATER = [
    r"Java\latest\jdk-{v}",
    r"Java\jdk-{v}",
]
PROGRAMS_OF_ALL = [
    r"Zulu\zulu-{v}",
    r"Zulu\zulu-{v}-jre",
    r"BellSoft\LibericaJDK-{v}",
    r"BellSoft\LibericaJDK-{v}-Full",
    r"BellSoft\LibericaJRE-{v}",
    r"BellSoft\LibericaJRE-{v}-Full",
]

# Linux; packages of 8 often go by the version's long name.
LINUX_OF_8 = [
    r"\usr\lib\jvm\java-8-openjdk-amd64",
    r"\usr\lib\jvm\java-1.8.0-openjdk",
    r"\usr\lib\jvm\java-8-openjdk",
    r"\usr\lib\jvm\temurin-8-jdk-amd64",
    r"\usr\lib\jvm\temurin-8-jre-amd64",
    r"\usr\lib\jvm\java-1.8.0-amazon-corretto",
    r"\usr\lib64\jvm\java-1.8.0-openjdk",
    r"\usr\java\jdk-1.8",
]
LINUX_OF_LATER = [
    r"\usr\lib\jvm\java-{v}-openjdk-amd64",
    r"\usr\lib\jvm\java-{v}-openjdk",
    r"\usr\lib\jvm\temurin-{v}-jdk-amd64",
    r"\usr\lib\jvm\temurin-{v}-jre-amd64",
    r"\usr\lib\jvm\java-{v}-amazon-corretto",
    r"\usr\lib64\jvm\java-{v}-openjdk",
    r"\usr\java\jdk-{v}",
]
LINUX_OF_NO_VERSION = [
    r"\usr\lib\jvm\default-java",
    r"\usr\java\latest",
    r"\opt\java\openjdk",
]

BESIDE_LAUNCHER = ["jre"]


def windows_registry(v):
    values = (REGISTRY_OF_8 if v == 8 else REGISTRY_OF_LATER) + REGISTRY_OF_ALL
    return [rf"\HKEY_LOCAL_MACHINE\SOFTWARE\{bits}{value.format(v=v)}"
            for value in values for bits in ("", "WOW6432Node" "\\")]


def windows_paths(v):
    of_version = PROGRAMS_OF_8 if v == 8 else PROGRAMS_OF_LATER
    paths = [r"\Program Files" "\\" + place for place in of_version + PROGRAMS_OF_ALL]
    if v in VERSIONS_WITH_32_BITS:
        places = (PROGRAMS_OF_8 if v == 8 else []) + PROGRAMS_OF_ALL
        paths += [r"\Program Files (x86)" "\\" + place for place in places]
    return [path.format(v=v) for path in paths]


def linux_paths(v):
    return [path.format(v=v) for path in (LINUX_OF_8 if v == 8 else LINUX_OF_LATER)]


def block(tag, values):
    return "".join(f"{line}\n" for line in [f"{tag}:", *(f"  {v}" for v in values), "/:"])


def jvm_file(description, wanted, exe, hints, ending=""):
    return (f"DESC:  {description}\nJVM_EXE:  {exe}\n" + block("JVM_PROPERTIES", [wanted]) + hints +
            ending + 'CLASSPATH:  " -cp "\nCLASSPATH_SEPARATOR:  ;\nSYSTEM:  " -D"\n'
            "SYSTEM_SEPARATOR:  =\n")


def windows_hints(versions):
    return (block("PLATFORM_HINT", [hint for v in versions for hint in windows_registry(v)]) +
            block("PATH_HINT", BESIDE_LAUNCHER + [hint for v in versions for hint in windows_paths(v)]))


def linux_hints(versions):
    return block("PATH_HINT", BESIDE_LAUNCHER + [hint for v in versions for hint in linux_paths(v)] +
                 LINUX_OF_NO_VERSION)


# A folder's executable, its hints, and what its `any` has besides: on Linux a drive is usually the
# whole file system, so no disks are searched.
SYSTEMS = {
    "windows": (r"bin\java.exe", windows_hints, "SEARCH_ALL:  1\n"),
    "linux": (r"bin\java", linux_hints, ""),
}


def jvm_files():
    """Names with their texts."""
    for folder, (exe, hints, search) in SYSTEMS.items():
        for v in VERSIONS:
            yield (f"{folder}/{v}.jvm",
                   jvm_file(f"Java {v}", f"corvane.java.feature={v}", exe, hints([v])))
        yield (f"{folder}/any.jvm",
               jvm_file("Java 8 or later", "corvane.java.atleast.8=true", exe, hints(VERSIONS), search))


def main(folder):
    for name, text in jvm_files():
        path = Path(folder) / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(text.encode())


if __name__ == "__main__":
    main(*sys.argv[1:])
