#!/usr/bin/env python3
"""Writes the JVM files: `make_jvms.py FOLDER` fills FOLDER/windows and FOLDER/linux.

To add a version, add its number to VERSIONS; to add a place where a vendor puts its JVMs, add a
line to a table. In a place {v} stands for the version.
"""

import sys
from pathlib import Path

VERSIONS = [25, 21, 17, 11, 8]  # newest first, as `any` and `17+` try them
VERSIONS_WITH_32_BITS = [21, 17, 11, 8]

# The values below SOFTWARE of HKEY_LOCAL_MACHINE or HKEY_CURRENT_USER that hold a home, by vendor.
REGISTRY_OF_8 = [
    r"JavaSoft\Java Runtime Environment\1.8*\JavaHome",
    r"JavaSoft\Java Development Kit\1.8*\JavaHome",
]
REGISTRY_OF_LATER = [
    r"JavaSoft\JDK\{v}*\JavaHome",
    r"JavaSoft\JRE\{v}*\JavaHome",
]
REGISTRY_OF_ALL = [
    r"Eclipse Adoptium\JDK\{v}.*\hotspot\MSI\Path",
    r"Eclipse Adoptium\JRE\{v}.*\hotspot\MSI\Path",
    r"AdoptOpenJDK\JDK\{v}.*\*\MSI\Path",
    r"AdoptOpenJDK\JRE\{v}.*\*\MSI\Path",
    r"Microsoft\JDK\{v}.*\hotspot\MSI\Path",
    r"Semeru\JDK\{v}.*\openj9\MSI\Path",
    r"Semeru\JRE\{v}.*\openj9\MSI\Path",
    r"Azul Systems\Zulu\zulu-{v}\InstallationPath",
    r"Azul Systems\Zulu\zulu-{v}-jre\InstallationPath",
]

# The directories below \Program Files.
PROGRAMS_OF_8 = [
    r"Java\latest\jre-1.8",
    r"Java\latest\jdk-1.8",
    r"Java\jre-1.8",
    r"Java\jdk-1.8",
    r"Java\jre8",
    r"Java\jre1.8*",
    r"Java\jdk1.8*",
    r"Amazon Corretto\jdk1.8*",
    r"Amazon Corretto\jre8*",
    r"RedHat\java-1.8.0-*",
]
PROGRAMS_OF_LATER = [
    r"Java\latest\jdk-{v}",
    r"Java\jdk-{v}*",
    r"Amazon Corretto\jdk{v}*",
    r"RedHat\java-{v}-*",
    r"OpenJDK\jdk-{v}*",
]
PROGRAMS_OF_ALL = [
    r"Eclipse Adoptium\jdk-{v}.*",
    r"Eclipse Adoptium\jre-{v}.*",
    r"AdoptOpenJDK\jdk-{v}.*",
    r"AdoptOpenJDK\jre-{v}.*",
    r"Microsoft\jdk-{v}.*",
    r"Semeru\jdk-{v}.*",
    r"Semeru\jre-{v}.*",
    r"Zulu\zulu-{v}",
    r"Zulu\zulu-{v}-jre",
    r"BellSoft\LibericaJDK-{v}",
    r"BellSoft\LibericaJDK-{v}-Full",
    r"BellSoft\LibericaJRE-{v}",
    r"BellSoft\LibericaJRE-{v}-Full",
    r"SapMachine\JDK\{v}",
    r"SapMachine\JRE\{v}",
]

# What variables name on every system: tried in front of the other places with variables, and behind.
OF_THE_USER = ["%JAVA_HOME%;%JDK_HOME%"]
OF_THE_PATH = ["%PATH%"]

# The directories below that of the user: the IDEs', Gradle's and the package managers' own.
USERS_OF_8 = [r".jdks\*-1.8*"]
USERS_OF_ALL = [
    r".jdks\*-{v}*",
    r".gradle\jdks\*-{v}-*",
    r".gradle\jdks\*-{v}-*\*{v}*",
    r".sdkman\candidates\java\{v}.*",
]
# Windows: below the directory of the programs that are the user's own; of a package manager.
LOCAL_PROGRAMS = [
    r"Eclipse Adoptium\jdk-{v}.*",
    r"Eclipse Adoptium\jre-{v}.*",
    r"Microsoft\jdk-{v}.*",
    r"Semeru\jdk-{v}.*",
]
PACKAGE_FOLDERS = [r"%SCOOP%", r"%USERPROFILE%\scoop", r"%ProgramData%\scoop"]
PACKAGES = [
    r"apps\*jdk{v}*\current",
    r"apps\*{v}-jdk*\current",
    r"apps\*{v}-jre*\current",
]

# Linux; packages of 8 often go by the version's long name.
LINUX_OF_8 = [
    r"\usr\lib\jvm\java-1.8.0-*",
    r"\usr\lib64\jvm\java-1.8.0-*",
    r"\usr\java\jdk-1.8*",
    r"\usr\java\jdk1.8*",
]
LINUX_OF_ALL = [
    r"\usr\lib\jvm\*-{v}-*",
    r"\usr\lib\jvm\zulu{v}*",
    r"\usr\lib\jvm\bellsoft-java{v}*",
    r"\usr\lib64\jvm\*-{v}-*",
    r"\usr\java\jdk-{v}*",
    r"\opt\*jdk-{v}*",
]
LINUX_OF_NO_VERSION = [
    r"\usr\lib\jvm\default-java",
    r"\usr\java\latest",
    r"\opt\java\openjdk",
]

BESIDE_LAUNCHER = ["jre"]

PATIENCE = 10  # seconds for the answer of a candidate, on a slow machine that has just started


def spelled(v, places):
    return [place.format(v=v) for place in places]


def windows_registry(v):
    values = (REGISTRY_OF_8 if v == 8 else REGISTRY_OF_LATER) + REGISTRY_OF_ALL
    # The user's own part has one view for both sizes.
    parts = [r"\HKEY_LOCAL_MACHINE\SOFTWARE", r"\HKEY_LOCAL_MACHINE\SOFTWARE\WOW6432Node",
             r"\HKEY_CURRENT_USER\SOFTWARE"]
    return [rf"{part}\{value}" for value in spelled(v, values) for part in parts]


def windows_paths(v):
    places = (PROGRAMS_OF_8 if v == 8 else PROGRAMS_OF_LATER) + PROGRAMS_OF_ALL
    folders = [r"\Program Files", r"\Program Files (x86)"]
    return [rf"{folder}\{place}" for folder in folders[:1 + (v in VERSIONS_WITH_32_BITS)]
            for place in spelled(v, places)]


def users_places(v):
    return spelled(v, (USERS_OF_8 if v == 8 else []) + USERS_OF_ALL)


def windows_variables(v):
    return ([rf"%USERPROFILE%\{place}" for place in users_places(v)] +
            [rf"%LOCALAPPDATA%\Programs\{place}" for place in spelled(v, LOCAL_PROGRAMS)] +
            [rf"{folder}\{place}" for folder in PACKAGE_FOLDERS for place in spelled(v, PACKAGES)])


def linux_paths(v):
    return spelled(v, (LINUX_OF_8 if v == 8 else []) + LINUX_OF_ALL)


def linux_variables(v):
    return [rf"%HOME%\{place}" for place in users_places(v)]


def block(tag, values):
    return "".join(f"{line}\n" for line in [f"{tag}:", *(f"  {v}" for v in values), "/:"])


def jvm_file(description, wanted, exe, hints, ending=""):
    return (f"DESC:  {description}\nJVM_EXE:  {exe}\n" + block("JVM_PROPERTIES", [wanted]) +
            f"VERIFY_SECONDS:  {PATIENCE}\n" + hints + ending + 'CLASSPATH:  " -cp "\nCLASSPATH_SEPARATOR:  ;\nSYSTEM:  " -D"\n'
            "SYSTEM_SEPARATOR:  =\n")


def env_hints(variables, versions):
    return block("ENV_HINT",
                 OF_THE_USER + [hint for v in versions for hint in variables(v)] + OF_THE_PATH)


def windows_hints(versions):
    return (block("PLATFORM_HINT", [hint for v in versions for hint in windows_registry(v)]) +
            block("PATH_HINT", BESIDE_LAUNCHER + [hint for v in versions for hint in windows_paths(v)]) +
            env_hints(windows_variables, versions))


def linux_hints(versions):
    return (block("PATH_HINT", BESIDE_LAUNCHER + [hint for v in versions for hint in linux_paths(v)] +
                  LINUX_OF_NO_VERSION) + env_hints(linux_variables, versions))


# A folder's executable, its hints, and what its `any` and `17+` have besides: on Linux a drive is
# usually the whole file system, so no disks are searched.
SYSTEMS = {
    "windows": (r"bin\java.exe", windows_hints, "SEARCH_ALL:  1\n"),
    "linux": (r"bin\java", linux_hints, ""),
}


def jvm_files():
    """Names with their texts."""
    for folder, (exe, hints, search) in SYSTEMS.items():
        for v in VERSIONS:
            later = [later for later in VERSIONS if later >= v]
            yield (f"{folder}/{v}.jvm",
                   jvm_file(f"Java {v}", f"corvane.java.feature={v}", exe, hints([v])))
            yield (f"{folder}/{v}+.jvm",
                   jvm_file(f"Java {v} or later", f"corvane.java.feature>={v}", exe, hints(later),
                            search))
        yield (f"{folder}/any.jvm",
               jvm_file("Java 8 or later", "corvane.java.feature>=8", exe, hints(VERSIONS), search))


def main(folder):
    for name, text in jvm_files():
        path = Path(folder) / name
        path.parent.mkdir(parents=True, exist_ok=True)
        # One that stays as it is keeps its time, too, so that nothing is built anew.
        if not path.exists() or path.read_bytes() != text.encode():
            path.write_bytes(text.encode())


if __name__ == "__main__":
    main(*sys.argv[1:])
