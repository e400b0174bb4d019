#!/usr/bin/env python3
"""Makes the Windows resources, or the host build's message tables, from messages/*.txt.

Usage: generate.py windows|hosted MESSAGES_FOLDER OUTPUT
"""

import sys
from pathlib import Path

from dialogs import templates
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


def windows_language(language):
    """Its texts and dialogs, under each number that leads to it."""
    rows = "".join(f'  {number} "{text}"\n' for number, text in language.texts.items())
    resources = f"STRINGTABLE\nBEGIN\n{rows}END\n{templates(language)}"
    # The language proper in the lower ten bits, the country above.
    return "".join(f"\nLANGUAGE {id & 0x3FF}, {id >> 10}\n{resources}" for id in language.ids)


def windows_source(languages):
    return WINDOWS_HEADER + "".join(map(windows_language, languages))


def main():
    if len(sys.argv) != 4 or sys.argv[1] not in ("windows", "hosted"):
        sys.exit(__doc__)
    languages = read_languages(sys.argv[2])
    source = windows_source if sys.argv[1] == "windows" else hosted_source
    Path(sys.argv[3]).write_text(source(languages), encoding="utf-8")


main()
