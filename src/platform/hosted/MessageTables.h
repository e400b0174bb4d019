// The string tables of all languages. They are generated from the same sources as the Windows
// resources; CMake hands the generated file over as CORVANE_MESSAGE_TABLES_CPP.
#pragma once

#include <cstddef>

namespace corvane::hosted {

struct MessageText {
    unsigned id;
    const char* text;
};

struct LanguageTexts {
    unsigned languageId;       // of Windows, 9 is English
    const char* locales;       // blank-separated, such as "zh_TW zh_HK"
    const MessageText* texts;  // in any order
    std::size_t count;
};

extern const LanguageTexts languageTables[];
extern const std::size_t languageTableCount;

// The table for the locale of a POSIX environment, such as "pt_BR.UTF-8": a table that names
// language and territory, else one that names the language, else one of another territory of that
// language, else English. Null only without an English table.
const LanguageTexts* chooseLanguage(const LanguageTexts* tables, std::size_t count,
                                    const char* locale);

}  // namespace corvane::hosted
