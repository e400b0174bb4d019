// White space, trimming, lines, suffixes, decimal numbers.
#include "foundation/TextLines.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace corvane {

namespace {

template <class Integer>
bool scanClamped(const String& text, Integer& value) noexcept {
    char* end = nullptr;
    const long long number = std::strtoll(text.cstr(), &end, 10);
    if (end == text.cstr())
        return false;
    using Limits = std::numeric_limits<Integer>;
    value = static_cast<Integer>(std::clamp<long long>(number, Limits::lowest(), Limits::max()));
    return true;
}

}  // namespace

bool isWhite(char character) noexcept {
    return character != '\0' && std::strchr(whitespaceChars, character) != nullptr;
}

void trim(String& text, const char* set) {
    text.erase(text.findLastNotOf(set) + 1);  // npos + 1 is 0
    text.erase(0, text.findFirstNotOf(set));
}

String replaceAll(const String& text, const String& what, const String& replacement) {
    String out;
    std::size_t copied = 0;
    for (std::size_t at = text.find(what); at != String::npos; at = text.find(what, copied)) {
        out.append(text, copied, at - copied).append(replacement);
        copied = at + what.length();
    }
    return copied == 0 ? text : out.append(text, copied, String::npos);
}

void readLine(std::FILE* file, String& line) {
    char piece[256];
    std::size_t used = 0;
    for (int c = std::getc(file); c != EOF && c != '\n'; c = std::getc(file)) {
        if (c == '\r')
            continue;
        if (used == sizeof piece) {
            line.append(piece, used);
            used = 0;
        }
        piece[used++] = static_cast<char>(c);
    }
    line.append(piece, used);
    trim(line);
}

void readLine(const String& text, std::size_t& pos, String& line) {
    if (pos >= text.length())
        return;
    const std::size_t end = std::min(text.find('\n', pos), text.length());
    for (; pos < end; ++pos) {
        const std::string_view rest(text.charAt(pos), end - pos);
        const std::size_t size = std::min(rest.find('\r'), rest.length());
        line.append(rest.data(), size);
        pos += size;
    }
    pos = end + 1;
    trim(line);
}

// The formatted output of the standard library would be half as large as the launcher's own code.
void writeLine(std::FILE* file, const String& text) {
    std::fputs(text.cstr(), file);
    std::putc('\n', file);
}

bool atEnd(std::FILE* file) {
    const int next = std::getc(file);
    return next == EOF || std::ungetc(next, file) == EOF;
}

std::size_t endsWith(const String& text, const String& suffix) noexcept {
    const std::size_t found = text.rfind(suffix);
    return found == text.length() - suffix.length() ? found : String::npos;
}

String decimalText(std::int32_t value) {
    char digits[12];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    return {digits, static_cast<std::size_t>(end - digits)};
}

bool scanNumber(const String& text, std::int32_t& value) noexcept {
    return scanClamped(text, value);
}

bool scanNumber(const String& text, std::int16_t& value) noexcept {
    return scanClamped(text, value);
}

void ensureTrailingSeparator(String& path) {
    if (!path.empty() && endsWith(path, pathSeparator) == String::npos)
        path.append(pathSeparator);
}

}  // namespace corvane
