"""The check of the languages' texts: one that lacks something stops the build. Each case damages
the German texts.

Usage: languages_test.py SOURCE_FOLDER   (resources)
"""

import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

RESOURCES = Path(sys.argv.pop())

# What is replaced (a regular expression), by what, and the complaint; None: the texts are fine.
CASES = [
    ("$^", "", None),
    ('3 ".*"\n', "", "message 3 is missing"),
    ('12 "', '99 "', "message 99 is unknown"),
    ('5 ".*"', '5 "Wird gestartet..."', "message 5 has other insertions"),
    ('26 "', '26 "100 % ', "message 26 has other insertions"),
    ('13 "(.*) "', r'13 "\1"', "message 13 has other leading or trailing blanks"),
    ('34 " ', '34 "', "message 34 has other leading or trailing blanks"),
    ('19 ".*"', '19 "Kein "JVM""', "message 19 holds a straight double quote"),
    ('31 ".*"', f'31 "{"Donaudampfschiff " * 14}..."', "message 31 does not fit"),
    ('25 ".*"', f'25 "{"Datenträger " * 10}..."', "messages 3 and 25 together do not fit"),
    ("language 7", "language 9", "language 9 is that of"),
    ("locales de", "also 1033\\nlocales de", "language 1033 is that of"),
    ("locales de", "layout rlt\\nlocales de", "layout is one of ltr, mirrored, rtl, not: rlt"),
    ("locales de", "layout rtl\\nlocales de", "message 8 has two right-to-left marks in front, or"),
    ("locales de", "", "no setting locales"),
    ('12 "', '11 "', "neither a setting nor a new message"),
]


def generate(old, new):
    """Runs the generator over damaged texts; gives its complaints, or None if it has none."""
    with tempfile.TemporaryDirectory() as scratch:
        messages = Path(scratch) / "messages"
        shutil.copytree(RESOURCES / "messages", messages)
        german = messages / "de.txt"
        text = german.read_text(encoding="utf-8")
        damaged = re.sub(f"^{old}", new, text, count=1, flags=re.MULTILINE)
        german.write_text(damaged, encoding="utf-8")
        words = [RESOURCES / "generate.py", "windows", messages, Path(scratch) / "out.rc"]
        result = subprocess.run([sys.executable, "-B", *words], capture_output=True, text=True)
        return result.stderr if result.returncode != 0 else None


for old, new, complaint in CASES:
    words = generate(old, new)
    if (words is None) != (complaint is None) or (complaint or "") not in (words or ""):
        sys.exit(f"expected: {complaint}\ngot: {words}")
