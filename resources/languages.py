"""The texts of all languages (messages/*.txt): reading them, checking them against English, and
estimating whether they fit the controls that show them."""

import re
import sys
from dataclasses import dataclass, field
from pathlib import Path

ENGLISH = 9
TITLE = 105
DIALOG_TEXT = 31

# Average widths in dialog units: a quarter of the average letter each, twice that for a full-width
# character. Generous, since real texts hold many narrow letters.
LETTER_WIDTH = 4
FULL_WIDTH = 8
LINE_HEIGHT = 8

# What the status line shows together: a stage with the title, and a detail with a description.
STATUS_SIZE = (236, 21)
DIALOG_TEXT_SIZE = (223, 35)
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
    def font(self):
        name, size = self.settings["font"].rsplit(" ", 1)
        return name.strip('"'), int(size)

    @property
    def layout(self):
        """"ltr", "mirrored" or "rtl"."""
        return self.settings.get("layout", "ltr")


class Problem(Exception):
    """A fault in a language's file."""


def read_language(path):
    language = Language(path)
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if not line or line.startswith("#"):
            continue
        message = re.fullmatch(r'(\d+) "(.*)"', line)
        setting = re.fullmatch(r"(language|name|locales|font|layout) (.+)", line)
        if message and int(message[1]) not in language.texts:
            language.texts[int(message[1])] = message[2]
        elif setting:
            language.settings[setting[1]] = setting[2]
        else:
            raise Problem(f"{path}:{number}: neither a setting nor a new message: {line}")
    missing = {"language", "name", "locales", "font"} - language.settings.keys()
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


def fits(text, size):
    return line_count(text, size[0]) <= size[1] // LINE_HEIGHT


def check_widths(language):
    """Yields the texts that don't fit their controls."""
    texts = language.texts
    if not fits(texts[DIALOG_TEXT], DIALOG_TEXT_SIZE):
        yield f"message {DIALOG_TEXT} does not fit its control"
    for stage in STAGES:
        for detail in DETAILS:
            status = texts[stage].replace("%1!s!", texts[TITLE]) + " " + texts[detail].replace(
                "%1!s!", DESCRIPTION
            )
            if not fits(status, STATUS_SIZE):
                yield f"messages {stage} and {detail} together do not fit the status line"


def check_ids(languages):
    """Yields the files of which another has taken the language id."""
    taken = {}
    for language in languages:
        first = taken.setdefault(language.id, language)
        if first is not language:
            yield f"{language.path}: language {language.id} is that of {first.path.name}"


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
