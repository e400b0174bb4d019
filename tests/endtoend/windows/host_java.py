"""Runs the host's Java for a Windows program under Wine (java.cpp): Windows paths take host form on
the way in; both streams, and at the end the exit value, go into files.

Usage: host_java.py JAVA RESULT_FILE [ARGUMENT...]
"""

import os
import re
import subprocess
import sys

# As the launcher's host build takes paths for host programs: nothing of a word or path in front.
WINDOWS_PATH = re.compile(
    r'(?<![A-Za-z0-9/\\\x80-\U0010ffff])([A-Za-z]):((?:\\|/(?!/))[^;":<>|?*]*)')


def drive(letter):
    return os.path.realpath(f"{os.environ['WINEPREFIX']}/dosdevices/{letter.lower()}:").rstrip("/")


def host_form(text):
    """`text` with its Windows paths in host form; a text that holds one is taken for a list."""
    def path(match):
        return drive(match[1]) + match[2].replace("\\", "/")

    changed = WINDOWS_PATH.sub(path, text)
    return text if changed == text else changed.replace(";", ":")


def main(java, result, *arguments):
    result = host_form(result)
    environment = {name: value if name.startswith("WINE") else host_form(value)
                   for name, value in os.environ.items()}
    with open(result + ".out", "wb") as out, open(result + ".err", "wb") as err:
        code = subprocess.call([java, *map(host_form, arguments)], stdin=subprocess.DEVNULL,
                               stdout=out, stderr=err, env=environment)
    # Renamed into place, so that whoever waits for it finds it whole.
    with open(result + ".part", "w", encoding="ascii") as file:
        file.write(str(code if code >= 0 else 128 - code))
    os.rename(result + ".part", result + ".exit")


main(*sys.argv[1:])
