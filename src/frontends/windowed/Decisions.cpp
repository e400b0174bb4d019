// What the windowed front end decides.
#include "frontends/windowed/Decisions.h"

#include <algorithm>
#include <string_view>

#include "foundation/TextLines.h"

namespace corvane {

namespace {

constexpr std::int32_t fullBar = 100;
constexpr std::uint32_t closeThisProgram = 1;
constexpr std::size_t firstLines = 15;
constexpr std::size_t lastLines = 10;
constexpr std::size_t longestLine = 200;

// Appends a line of a box, of which it shows so many characters.
void appendCut(String& shown, std::string_view line) {
    std::size_t characters = 0;
    std::size_t at = 0;
    // A byte of this form goes on with a character.
    const auto goesOn = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; };
    for (; at < line.length(); ++at) {
        if (!goesOn(line[at]) && ++characters > longestLine)
            break;
    }
    shown.append(line.data(), at).append(at < line.length() ? "...\n" : "\n");
}

}  // namespace

DialogId dialogFor(std::int32_t kind) noexcept {
    return kind == 0 ? DialogId::tall : DialogId::compact;
}

std::int32_t positionAfterStep(std::int32_t current, std::int32_t delta) noexcept {
    const auto sum = static_cast<std::uint32_t>(current) + static_cast<std::uint32_t>(delta);
    return static_cast<std::int32_t>(sum % fullBar);
}

std::int32_t positionShown(std::int32_t position) noexcept {
    return position % fullBar;
}

std::uint32_t hideDelayMs(std::int16_t delaySeconds) noexcept {
    constexpr std::uint32_t msPerSecond = 1000;
    return delaySeconds > 0 ? static_cast<std::uint32_t>(delaySeconds) * msPerSecond : 0;
}

bool sessionEnds(bool ending, std::uint32_t flags) noexcept {
    return ending && (flags & closeThisProgram) == 0;
}

String boxText(const String& text) {
    const std::string_view all = text.view();
    const auto ends = static_cast<std::size_t>(std::count(all.begin(), all.end(), '\n'));
    const std::size_t count = ends + (all.empty() || all.ends_with('\n') ? 0 : 1);
    const bool cut = count > firstLines + lastLines;
    String shown;
    std::size_t start = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t end = std::min(all.find('\n', start), all.length());
        if (!cut || i < firstLines || i >= count - lastLines)
            appendCut(shown, all.substr(start, end - start));
        else if (i == firstLines)
            shown.append("... (")
                .append(decimalText(static_cast<std::int32_t>(count - firstLines - lastLines)))
                .append(")\n");
        start = end + 1;
    }
    return all.ends_with('\n') ? shown : shown.erase(shown.length() - (shown.empty() ? 0 : 1));
}

bool isWebAddress(const String& address) noexcept {
    const std::string_view text = address.view();
    const bool ofTheWeb = text.starts_with("https://") || text.starts_with("http://");
    return ofTheWeb && std::none_of(text.begin(), text.end(), [](char c) {
               const auto byte = static_cast<unsigned char>(c);
               return byte <= ' ' || byte == 0x7F || c == '"' || c == '<' || c == '>';
           });
}

bool readsFromTheRight(const String& text) noexcept {
    return text.view().starts_with("\u200F\u200F");
}

Position centred(Size screen, Size window) noexcept {
    return {(screen.width - window.width) / 2, (screen.height - window.height) / 2};
}

}  // namespace corvane
