#!/usr/bin/env python3
"""Makes the Windows resources, or the host build's message tables, from messages/*.txt.

Usage: generate.py windows|hosted MESSAGES_FOLDER OUTPUT
"""

import sys
from pathlib import Path

from languages import read_languages

HOSTED_HEADER = """\
// Made by resources/generate.py from resources/messages. Do not edit.
#include "platform/hosted/MessageTables.h"

namespace corvane::hosted {
"""

WINDOWS_HEADER = """\
// Made by resources/generate.py from resources/messages. Do not edit.
#include <windows.h>
#include <commctrl.h>
#pragma code_page(65001)
"""

# The dialogs' control rectangles: left, top, width, height, in dialog units. A right-to-left
# template keeps the bar and puts the icon on the right.
TALL = {
    "size": (278, 92),
    "status": (10, 52, 254, 21),
    "bar": (10, 73, 257, 10),
    "text": (44, 10, 223, 35),
    "icon": (10, 10, 21, 20),
    "rtl": {"status": (13, 52, 254, 21), "text": (10, 10, 223, 35), "icon": (246, 10, 21, 20)},
}
SHORT = {
    "size": (278, 57),
    "status": (34, 10, 236, 24),
    "bar": (10, 37, 259, 10),
    "text": (44, 10, 223, 35),
    "icon": (10, 10, 20, 20),
    "rtl": {
        "status": (7, 10, 236, 24),
        "bar": (8, 37, 259, 10),
        "icon": (247, 10, 20, 20),
    },
}
DIALOGS = ((101, TALL, True), (103, SHORT, False))


def hosted_table(language):
    name = f"texts{language.id}"
    rows = "".join(f'    {{{number}, "{text}"}},\n' for number, text in language.texts.items())
    return f"\nstatic const MessageText {name}[] = {{\n{rows}}};\n"


def hosted_source(languages):
    tables = "".join(hosted_table(language) for language in languages)
    rows = "".join(
        f'    {{{language.id}, "{language.settings["locales"]}", texts{language.id}, '
        f"{len(language.texts)}}},\n"
        for language in languages
    )
    return (
        HOSTED_HEADER
        + tables
        + f"\nconst LanguageTexts languageTables[] = {{\n{rows}}};\n"
        + f"const std::size_t languageTableCount = {len(languages)};\n\n"
        + "}  // namespace corvane::hosted\n"
    )


def dialog(language, number, shape, shows_text):
    font, size = language.font
    rtl = language.layout == "rtl"
    places = {**shape, **shape["rtl"]} if rtl else shape
    rectangle = {key: ", ".join(map(str, places[key])) for key in ("status", "bar", "text", "icon")}
    extended = ", WS_EX_RTLREADING | WS_EX_RIGHT" if rtl else ""
    dialog_style = {"rtl": "EXSTYLE WS_EX_RTLREADING\n", "mirrored": "EXSTYLE WS_EX_LAYOUTRTL\n"}
    visible = "WS_VISIBLE" if shows_text else "NOT WS_VISIBLE"
    width, height = shape["size"]
    return (
        f"{number} DIALOGEX 0, 0, {width}, {height}\n"
        "STYLE WS_POPUP | WS_CAPTION | DS_MODALFRAME | DS_SETFONT\n"
        f"{dialog_style.get(language.layout, '')}"
        'CAPTION ""\n'
        f'FONT {size}, "{font}"\n'
        "BEGIN\n"
        f'  CONTROL "", 1000, "STATIC", SS_LEFT | SS_NOPREFIX | WS_CHILD | WS_VISIBLE | WS_GROUP, {rectangle["status"]}{extended}\n'
        f'  CONTROL "", 1001, PROGRESS_CLASSA, WS_CHILD | WS_VISIBLE, {rectangle["bar"]}\n'
        f'  CONTROL "", 1004, "STATIC", SS_LEFT | SS_NOPREFIX | WS_CHILD | {visible} | WS_GROUP, {rectangle["text"]}{extended}\n'
        f'  CONTROL 102, -1, "STATIC", SS_ICON | WS_CHILD | WS_VISIBLE, {rectangle["icon"]}\n'
        "END\n"
    )


def windows_language(language):
    primary, sub = language.id & 0x3FF, language.id >> 10
    rows = "".join(f'  {number} "{text}"\n' for number, text in language.texts.items())
    dialogs = "".join(dialog(language, *row) for row in DIALOGS)
    return (
        f"\nLANGUAGE {primary}, {sub}\nSTRINGTABLE\nBEGIN\n{rows}END\n{dialogs}"
    )


def windows_source(languages):
    return WINDOWS_HEADER + "".join(map(windows_language, languages))


def main():
    if len(sys.argv) != 4 or sys.argv[1] not in ("windows", "hosted"):
        sys.exit(__doc__)
    languages = read_languages(sys.argv[2])
    source = windows_source if sys.argv[1] == "windows" else hosted_source
    Path(sys.argv[3]).write_text(source(languages), encoding="utf-8")


main()
