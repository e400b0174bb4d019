// The order of versions.
#include "foundation/VersionOrder.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr std::string_view earlyWords[] = {"ea", "alpha", "beta", "rc", "internal", "snapshot"};

bool isDigit(char character) noexcept {
    return character >= '0' && character <= '9';
}

bool isLetter(char character) noexcept {
    return (character | 0x20) >= 'a' && (character | 0x20) <= 'z';
}

bool isEarlyWord(std::string_view word) noexcept {
    const auto sameLetter = [](char a, char b) { return (a | 0x20) == b; };
    return std::any_of(std::begin(earlyWords), std::end(earlyWords), [&](std::string_view early) {
        return std::equal(word.begin(), word.end(), early.begin(), early.end(), sameLetter);
    });
}

// What counts in a version: a number without its leading zeros, or the mark of an early build.
// Behind the last one stands, without end, the number 0.
struct Part {
    bool early = false;
    std::string_view digits;
};

// Takes the longest beginning of `text` of that kind off it.
template <class Kind>
std::string_view take(std::string_view& text, Kind isOfKind) noexcept {
    const auto end = std::find_if_not(text.begin(), text.end(), isOfKind);
    const auto length = static_cast<std::size_t>(end - text.begin());
    const std::string_view taken = text.substr(0, length);
    text.remove_prefix(length);
    return taken;
}

// Takes the next part off the front of `text`.
Part nextPart(std::string_view& text) noexcept {
    while (!text.empty()) {
        if (isDigit(text.front())) {
            std::string_view digits = take(text, isDigit);
            take(digits, [](char digit) { return digit == '0'; });
            return {false, digits};
        }
        if (isEarlyWord(take(text, isLetter)))
            return {true, {}};
        take(text, [](char other) { return !isDigit(other) && !isLetter(other); });
    }
    return {};
}

// Numbers of any length, since some builds are numbered by their date and time.
int compareParts(const Part& a, const Part& b) noexcept {
    if (a.early || b.early)
        return int{b.early} - int{a.early};
    if (a.digits.length() != b.digits.length())
        return a.digits.length() < b.digits.length() ? -1 : 1;
    return a.digits.compare(b.digits);
}

}  // namespace

int compareVersions(std::string_view a, std::string_view b) noexcept {
    while (!a.empty() || !b.empty()) {
        const Part partOfA = nextPart(a);
        const int order = compareParts(partOfA, nextPart(b));
        if (order != 0)
            return order;
    }
    return 0;
}

}  // namespace corvane
