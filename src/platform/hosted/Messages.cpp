// String-table texts in the user's language.
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

#include "platform/hosted/Environment.h"
#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/MessageTables.h"
#include "platform/hosted/SystemOperations.h"

namespace corvane::hosted {

namespace {

constexpr unsigned english = 9;

// The text up to the first of some characters, or all of it.
std::string upTo(const std::string& text, const char* ends) {
    return text.substr(0, text.find_first_of(ends));
}

// How well one of a table's locales serves the wanted one: 3 language and territory, 2 the language
// alone, 1 another territory, 0 not at all.
int localeRank(const std::string& offered, const std::string& wanted) {
    const std::string language = upTo(wanted, "_");
    if (offered == wanted) {
        return 3;
    }
    if (offered == language) {
        return 2;
    }
    return upTo(offered, "_") == language ? 1 : 0;
}

// The best of the ranks of a table's locales.
int tableRank(const LanguageTexts& table, const std::string& wanted) {
    int best = 0;
    std::istringstream locales(table.locales);
    for (std::string locale; locales >> locale;) {
        best = std::max(best, localeRank(locale, wanted));
    }
    return best;
}

// The text of an id in a table, or null.
const char* findText(const LanguageTexts* table, UINT id) {
    for (std::size_t i = 0; table != nullptr && i < table->count; ++i) {
        if (table->texts[i].id == id) {
            return table->texts[i].text;
        }
    }
    return nullptr;
}

}  // namespace

// The first variable that isn't empty decides, as it does for the host's own programs.
const char* environmentLocale() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            return value;
        }
    }
    return "";
}

const LanguageTexts* chooseLanguage(const LanguageTexts* tables, std::size_t count,
                                    const char* locale) {
    // The code set and the variant say nothing about the language.
    const std::string wanted = upTo(locale, ".@");
    const LanguageTexts* best = nullptr;
    int bestRank = 0;
    // The first of several equals counts; English holds the place until one fits.
    for (const LanguageTexts* table = tables; table != tables + count; ++table) {
        const int rank = tableRank(*table, wanted);
        const bool isDefault = best == nullptr && table->languageId == english;
        if (rank > bestRank || isDefault) {
            best = table;
            bestRank = rank;
        }
    }
    return best;
}

}  // namespace corvane::hosted

using namespace corvane::hosted;

int LoadStringA(void* /*module*/, UINT id, LPSTR buffer, int size) {
    if (injectedFailure(__func__)) {
        return 0;
    }
    const char* text =
        findText(chooseLanguage(languageTables, languageTableCount, environmentLocale()), id);
    if (text == nullptr) {
        fail(ERROR_RESOURCE_NAME_NOT_FOUND);
    }
    if (size <= 0) {
        return 0;
    }
    // A text that isn't there leaves an empty one in the buffer.
    text = text == nullptr ? "" : text;
    // The size counts bytes, but no character is cut in two, as in Windows' UTF-8 form.
    std::size_t length = std::min(std::strlen(text), static_cast<std::size_t>(size) - 1);
    while ((text[length] & 0xC0) == 0x80) {
        --length;
    }
    std::memcpy(buffer, text, length);
    buffer[length] = '\0';
    return static_cast<int>(length);
}
