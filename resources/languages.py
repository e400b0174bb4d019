"""The texts of all languages (messages/*.txt): reading them, checking them against English, and
estimating whether they fit the controls that show them (dialogs.py)."""

import re
import sys
from dataclasses import dataclass, field
from pathlib import Path

from dialogs import DIALOGS, LAYOUTS

ENGLISH = 9
TITLE = 105
DIALOG_TEXT = 31

# Each setting: its form, and what a complaint calls it.
SETTINGS = {
    "language": (r"\d+", "a number"),
    "also": (r"\d+( \d+)*", "numbers with blanks between"),
    "locales": (r"\S+( \S+)*", "names with blanks between"),
    "font": (r'".+" \d+', "a name in quotes and a size"),
    "layout": ("|".join(LAYOUTS), "one of " + ", ".join(LAYOUTS)),
}

# What can stand first in a message box, which then reads from the right if it begins with two
# right-to-left marks.
BOX_TEXTS = {*range(8, 12), *range(13, 18), *range(19, 25), 27, 29, 33, *range(35, 39)}
RIGHT_TO_LEFT = "\u200f\u200f"

# Average widths in dialog units: a quarter of the average letter each, twice that for a full-width
# character. Generous, since real texts hold many narrow letters.
LETTER_WIDTH = 4
FULL_WIDTH = 8
LINE_HEIGHT = 8

# What the status line shows together: a stage with the title, and a detail with a description.
STAGES = (2, 3, 4, 5)
DETAILS = (7, 25, 26)
DESCRIPTION = "Java 21"


@dataclass
class Language:
    """One language: its settings, and its texts by number."""

    path: Path
    settings: dict = field(default_factory=dict)
    texts: dict = field(default_factory=dict)

    @property
    def id(self):
        return int(self.settings["language"])

    @property
    def ids(self):
        """All numbers under which Windows is to find it."""
        return [self.id, *map(int, self.settings.get("also", "").split())]

    @property
    def font(self):
        name, size = self.settings["font"].rsplit(" ", 1)
        return name.strip('"'), int(size)

    @property
    def layout(self):
        return self.settings.get("layout", "ltr")


class Problem(Exception):
    """A fault in a language's file."""


def read_language(path):
    language = Language(path)
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if not line or line.startswith("#"):
            continue
        message = re.fullmatch(r'(\d+) "(.*)"', line)
        setting = re.fullmatch(f"({'|'.join(SETTINGS)}) (.+)", line)
        if message and int(message[1]) not in language.texts:
            language.texts[int(message[1])] = message[2]
        elif setting:
            form, words = SETTINGS[setting[1]]
            if not re.fullmatch(form, setting[2]):
                raise Problem(f"{path}:{number}: {setting[1]} is {words}, not: {setting[2]}")
            language.settings[setting[1]] = setting[2]
        else:
            raise Problem(f"{path}:{number}: neither a setting nor a new message: {line}")
    missing = {"language", "locales", "font"} - language.settings.keys()
    if missing:
        raise Problem(f"{path}: no setting {', '.join(sorted(missing))}")
    return language


def insertions(text):
    return sorted(re.findall(r"%\d!s!", text))


def blanks(text):
    """The leading and the trailing blanks."""
    return text[: len(text) - len(text.lstrip(" "))], text[len(text.rstrip(" ")) :]


def check_against(english, language):
    """Yields what `language` lacks in comparison with English."""
    for number in sorted(english.texts.keys() | language.texts.keys()):
        ours, theirs = english.texts.get(number), language.texts.get(number)
        if ours is None or theirs is None:
            yield f"message {number} is {'unknown' if ours is None else 'missing'}"
        elif insertions(ours) != insertions(theirs) or theirs.count("%") != ours.count("%"):
            yield f"message {number} has other insertions than English"
        elif blanks(ours) != blanks(theirs):
            yield f"message {number} has other leading or trailing blanks than English"
        elif '"' in theirs or "\\" in theirs:
            yield f"message {number} holds a straight double quote or a backslash"
        elif theirs.startswith(RIGHT_TO_LEFT) != (language.layout != "ltr" and number in BOX_TEXTS):
            yield f"message {number} has two right-to-left marks in front, or lacks them"


def width(word):
    return sum(FULL_WIDTH if ord(c) >= 0x1100 else LETTER_WIDTH for c in word)


def line_count(text, limit):
    """Lines that `text` takes when it wraps at blanks, and at full-width characters."""
    lines, used = 1, 0
    for word in re.findall(r"[\u1100-\uffff]|[^ \u1100-\uffff]+ ?", text):
        if used and used + width(word.rstrip()) > limit:
            lines, used = lines + 1, 0
        used += width(word)
    return lines


def fits(text, control):
    """Whether the dialogs that show a control have room for its text."""
    return all(
        line_count(text, shape[control][2]) <= shape[control][3] // LINE_HEIGHT
        for _, shape, shows_text in DIALOGS
        if shows_text or control != "text"
    )


def check_widths(language):
    """Yields the texts that don't fit their controls."""
    texts = language.texts
    if not fits(texts[DIALOG_TEXT], "text"):
        yield f"message {DIALOG_TEXT} does not fit its control"
    for stage in STAGES:
        for detail in DETAILS:
            status = texts[stage].replace("%1!s!", texts[TITLE]) + " " + texts[detail].replace(
                "%1!s!", DESCRIPTION
            )
            if not fits(status, "status"):
                yield f"messages {stage} and {detail} together do not fit the status line"


def check_ids(languages):
    """Yields the files of which another has taken the language id."""
    taken = {}
    for language in languages:
        for id in language.ids:
            first = taken.setdefault(id, language)
            if first is not language:
                yield f"{language.path}: language {id} is that of {first.path.name}"


def read_languages(folder):
    """All languages, English first, each one checked; ends the program with every fault found."""
    try:
        languages = [read_language(path) for path in sorted(Path(folder).glob("*.txt"))]
    except Problem as problem:
        sys.exit(str(problem))
    languages.sort(key=lambda language: (language.id != ENGLISH, language.id))
    english = languages[0]
    faults = [*check_ids(languages)] + [
        f"{language.path}: {fault}"
        for language in languages
        for fault in [*check_against(english, language)] or [*check_widths(language)]
    ]
    if faults:
        sys.exit("\n".join(faults))
    return languages
