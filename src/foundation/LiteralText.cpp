// The marks: a NUL, which no text of a file, an option or a variable holds, and a letter.
#include "foundation/LiteralText.h"

#include "foundation/TextLines.h"

namespace corvane {

namespace {

struct Mark {
    char separator;
    char letter;
};

constexpr Mark marks[] = {{'%', 'p'}, {'@', 'a'}, {'#', 'h'}};

String markOf(char letter) {
    const char bytes[] = {'\0', letter};
    return {bytes, sizeof bytes};
}

}  // namespace

String literal(const String& text) {
    String marked = text;
    for (const auto& [separator, letter] : marks)
        marked = replaceAll(marked, String(1, separator), markOf(letter));
    return marked;
}

String withoutMarks(const String& text) {
    if (text.find('\0') == String::npos)
        return text;
    String plain = text;
    for (const auto& [separator, letter] : marks)
        plain = replaceAll(plain, markOf(letter), String(1, separator));
    return plain;
}

}  // namespace corvane
