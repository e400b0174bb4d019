// Cutting of words and of quoted arguments out of a text.
#include "foundation/ArgumentText.h"

#include <algorithm>

#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"

namespace corvane {

namespace {

// What the standard `isspace` takes, whatever the locale.
constexpr const char* wordEnds = " \t\n\v\f\r";

[[noreturn]] void missingQuote(std::size_t pos) {
    throw LauncherException("Expected double quote to end argument near " +
                            decimalText(static_cast<std::int32_t>(pos)));
}

String readQuoted(const String& text, std::size_t& pos) {
    String argument;
    for (;;) {
        const std::size_t quote = text.find('"', pos);
        if (quote == String::npos)
            missingQuote(pos);
        if (quote + 1 == text.length() || *text.charAt(quote + 1) != '"') {
            argument.append(text, pos, quote - pos);
            pos = quote + 1;
            return argument;
        }
        if (quote + 2 == text.length()) {
            pos = String::npos;
            missingQuote(pos);
        }
        argument.append(text, pos, quote + 1 - pos);
        pos = quote + 2;
    }
}

}  // namespace

String nextToken(const String& text, std::size_t& pos, bool& noMore) {
    const std::size_t start = text.findFirstNotOf(wordEnds, pos);
    noMore = start == String::npos;
    if (noMore)
        return {};
    const std::size_t end = std::min(text.findFirstOf(wordEnds, start), text.length());
    pos = end + 1;
    return text.substr(start, end - start);
}

String readArgument(const String& text, std::size_t& pos, bool quoted) {
    if (!quoted) {
        pos = text.findFirstOf(whitespaceChars);
        return text.substr(0, pos);
    }
    String argument = readQuoted(text, pos);
    if (pos >= text.length())
        pos = String::npos;
    return argument;
}

}  // namespace corvane
