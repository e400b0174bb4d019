// Conversion between the two forms of Unicode text.
#include "platform/hosted/WideText.h"

namespace corvane::hosted {

namespace {

constexpr char32_t replacement = 0xFFFD;

// Beyond the end of the text there are zeros, which continue no sequence.
unsigned byteAt(std::string_view text, std::size_t pos) {
    return pos < text.size() ? static_cast<unsigned char>(text[pos]) : 0u;
}

// Number of bytes of a sequence by its first byte; 0 for a byte that starts none.
unsigned sequenceLength(unsigned first) {
    if (first < 0x80) {
        return 1;
    }
    if (first < 0xC2 || first > 0xF4) {
        return 0;
    }
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

// Decodes one well-formed sequence; length 0 if there is none at `pos`.
unsigned decode(std::string_view text, std::size_t pos, char32_t& code) {
    static constexpr char32_t lowest[] = {0, 0, 0x80, 0x800, 0x10000};
    const unsigned first = byteAt(text, pos);
    const unsigned length = sequenceLength(first);
    code = length <= 1 ? first : first & (0x7Fu >> length);
    for (unsigned i = 1; i < length; ++i) {
        const unsigned next = byteAt(text, pos + i);
        if ((next & 0xC0) != 0x80) {
            return 0;
        }
        code = code << 6 | (next & 0x3F);
    }
    // UTF-8 has no form for halves of pairs, and only the shortest form for the rest.
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return code < lowest[length] || code > 0x10FFFF || surrogate ? 0 : length;
}

// Codes beyond the first 65536 take two units.
void appendWide(std::u16string& wide, char32_t code) {
    if (code >= 0x10000) {
        wide += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
        code = 0xDC00 + ((code - 0x10000) & 0x3FF);
    }
    wide += static_cast<char16_t>(code);
}

void appendNarrow(std::string& text, char32_t code) {
    static constexpr unsigned leads[] = {0, 0, 0xC0, 0xE0, 0xF0};
    const unsigned length = code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
    // Six bits a byte, the highest first; the lead byte tells the length.
    for (unsigned i = length; i-- > 0;) {
        const unsigned bits = static_cast<unsigned>(code >> (6 * i));
        const bool lead = i == length - 1;
        text += static_cast<char>(lead ? leads[length] | bits : 0x80 | (bits & 0x3F));
    }
}

// The first and the second unit of such a pair.
bool isHigh(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool isLow(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

}  // namespace

std::u16string toWide(std::string_view text) {
    std::u16string wide;
    wide.reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();) {
        char32_t code = 0;
        const unsigned length = decode(text, pos, code);
        appendWide(wide, length == 0 ? 0xDC00 + byteAt(text, pos) : code);
        pos += length == 0 ? 1 : length;
    }
    return wide;
}

std::string toNarrow(std::u16string_view wide) {
    std::string text;
    text.reserve(wide.size());
    for (std::size_t i = 0; i < wide.size(); ++i) {
        const char16_t unit = wide[i];
        if (isHigh(unit) && i + 1 < wide.size() && isLow(wide[i + 1])) {
            const char32_t high = unit - 0xD800u;
            appendNarrow(text, 0x10000 + (high << 10) + (wide[++i] - 0xDC00u));
        } else if (unit >= 0xDC80 && unit <= 0xDCFF) {
            text += static_cast<char>(unit - 0xDC00);
        } else {
            appendNarrow(text, isHigh(unit) || isLow(unit) ? replacement : unit);
        }
    }
    return text;
}

}  // namespace corvane::hosted
