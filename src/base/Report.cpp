// The lines of the report.
#include "base/Report.h"

#include <charconv>

#include "base/RunContext.h"
#include "foundation/TextLines.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

// A number with leading zeros.
void appendDigits(String& text, unsigned number, int width) {
    for (unsigned place = width == 4 ? 1000 : width == 3 ? 100 : 10; place > 0; place /= 10)
        text.append(static_cast<char>('0' + number / place % 10));
}

// As 2026-01-31T23:59:59.999Z.
String timeStamp() {
    SYSTEMTIME now{};
    GetSystemTime(&now);
    const struct {
        unsigned number;
        int width;
        char behind;
    } parts[] = {{now.wYear, 4, '-'},        {now.wMonth, 2, '-'},  {now.wDay, 2, 'T'},
                 {now.wHour, 2, ':'},        {now.wMinute, 2, ':'}, {now.wSecond, 2, '.'},
                 {now.wMilliseconds, 3, 'Z'}};
    String text;
    for (const auto& [number, width, behind] : parts) {
        appendDigits(text, number, width);
        text.append(behind);
    }
    return text;
}

// Length of the UTF-8 character at the front of `text`, 0 if there is none.
std::size_t characterLength(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lead < 0x80                  ? 1
                               : lead < 0xC2 || lead > 0xF4 ? 0
                               : lead < 0xE0                ? 2
                               : lead < 0xF0                ? 3
                                                            : 4;
    if (length < 2 || text.length() < length)
        return length < 2 ? length : 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80)
            return 0;
    }
    // Forms that are longer than need be, halves of pairs, and what lies beyond the last character.
    const auto second = static_cast<unsigned char>(text[1]);
    const bool wrong = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
                       (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
    return wrong ? 0 : length;
}

void appendControl(String& text, char character) {
    constexpr const char* digits = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(character);
    text.append("\\u00").append(digits[code >> 4]).append(digits[code & 0xF]);
}

String quoted(std::string_view text) {
    String result = "\"";
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        const char first = text.front();
        if (length == 0)
            result.append("\\ufffd");
        else if (static_cast<unsigned char>(first) < ' ' || first == 0x7F)
            appendControl(result, first);
        else if (first == '"' || first == '\\')
            result.append('\\').append(first);
        else
            result.append(text.data(), length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return result.append('"');
}

}  // namespace

bool reportWanted() noexcept {
    return !runContext().reportFile.empty();
}

ReportObject::ReportObject(const char* event) : text_("{") {
    add("event", event);
    add("time", timeStamp());
}

ReportObject& ReportObject::add(const char* fieldName, const String& text) {
    name(fieldName);
    text_.append(quoted(text.view()));
    return *this;
}

ReportObject& ReportObject::add(const char* fieldName, std::int64_t number) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    name(fieldName);
    text_.append(digits, static_cast<std::size_t>(end - digits));
    return *this;
}

ReportObject& ReportObject::add(const char* fieldName, const StringList& texts) {
    name(fieldName);
    text_.append('[');
    for (std::int32_t i = 0; i < texts.count(); ++i)
        text_.append(i == 0 ? "" : ",").append(quoted(texts.at(i).view()));
    text_.append(']');
    return *this;
}

ReportObject& ReportObject::open(const char* fieldName) {
    name(fieldName);
    text_.append('{');
    return *this;
}

ReportObject& ReportObject::addIn(const String& fieldName, const String& text) {
    name(fieldName.view());
    text_.append(quoted(text.view()));
    return *this;
}

ReportObject& ReportObject::close() {
    text_.append('}');
    return *this;
}

void ReportObject::write() const {
    if (!reportWanted())
        return;
    // Closed with each line, so that nothing is lost whatever happens to the run.
    const StreamGuard report(openStream(runContext().reportFile.cstr(), "ab"));
    if (report)
        writeLine(report.get(), text());
}

void ReportObject::name(std::string_view fieldName) {
    if (!text_.view().ends_with('{'))
        text_.append(',');
    text_.append(quoted(fieldName)).append(':');
}

}  // namespace corvane
