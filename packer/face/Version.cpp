// Writing of the version resource.
#include "packer/face/Version.h"

#include <charconv>
#include <span>

#include "packer/face/Bytes.h"

namespace corvane::pack {

namespace {

constexpr std::uint32_t fixedMark = 0xFEEF04BD;
constexpr std::uint32_t fixedVersion = 0x0001'0000;
constexpr std::uint32_t flagsMask = 0x3F;
constexpr std::uint32_t windowsSystem = 0x0004'0004;
constexpr std::uint32_t application = 1;
constexpr std::uint32_t unicode = 1200;
constexpr std::u16string_view neutralTable = u"000004B0";  // no language, Unicode

constexpr std::size_t alignment = 4;

enum class ValueType { binary, text };

// A node: its sizes, its name, its value, and the nodes below it. A text's size counts its units.
std::string node(std::u16string_view name, ValueType type, const std::string& value,
                 std::span<const std::string> children = {}) {
    const std::size_t valueSize = type == ValueType::text ? value.size() / 2 : value.size();
    std::string bytes(2, '\0');
    appendNumber(bytes, static_cast<std::uint32_t>(valueSize), 2);
    appendNumber(bytes, type == ValueType::text, 2);
    appendText(bytes, name);
    appendNumber(bytes, 0, 2);
    fillUp(bytes, alignment);
    bytes += value;
    for (const std::string& child : children) {
        fillUp(bytes, alignment);
        bytes += child;
    }
    setNumber(bytes, 0, static_cast<std::uint32_t>(bytes.size()), 2);
    return bytes;
}

std::string textNode(std::u16string_view name, std::u16string_view text) {
    std::string value;
    appendText(value, text);
    appendNumber(value, 0, 2);
    return node(name, ValueType::text, value);
}

std::string fixedInfo(const std::array<std::uint16_t, 4>& numbers) {
    const auto pair = [&](std::size_t i) {
        return static_cast<std::uint32_t>(numbers[i]) << 16 | numbers[i + 1];
    };
    std::string bytes;
    for (const std::uint32_t value : {fixedMark, fixedVersion, pair(0), pair(2), pair(0), pair(2),
                                      flagsMask, 0U, windowsSystem, application, 0U, 0U, 0U})
        appendNumber(bytes, value, 4);
    return bytes;
}

}  // namespace

std::array<std::uint16_t, 4> versionNumbers(const std::string& version) {
    std::array<std::uint16_t, 4> numbers{};
    const char* at = version.data();
    const char* const end = at + version.size();
    for (std::uint16_t& number : numbers) {
        const auto [behind, error] = std::from_chars(at, end, number);
        if (error != std::errc())
            throw PackError(
                "a version begins with one to four numbers from 0 to 65535 with dots "
                "between them, as in 1.4.2: " +
                version);
        at = behind;
        if (at == end || *at != '.')
            return numbers;
        ++at;
    }
    throw PackError("more than four numbers in a version: " + version);
}

std::string writeVersion(const VersionInfo& info) {
    std::vector<std::string> texts;
    texts.reserve(info.texts.size());
    for (const auto& [name, text] : info.texts)
        texts.push_back(textNode(name, text));
    const std::string table = node(neutralTable, ValueType::text, "", texts);
    std::string translation;
    appendNumber(translation, 0, 2);
    appendNumber(translation, unicode, 2);
    const std::string variable = node(u"Translation", ValueType::binary, translation);
    const std::string children[] = {
        node(u"StringFileInfo", ValueType::text, "", {&table, 1}),
        node(u"VarFileInfo", ValueType::text, "", {&variable, 1}),
    };
    return node(u"VS_VERSION_INFO", ValueType::binary, fixedInfo(info.numbers), children);
}

}  // namespace corvane::pack
