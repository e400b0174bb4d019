// What a Windows program carries beside its code: icons, texts, dialogs, its version.
#pragma once

#include <compare>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace corvane::pack {

// A type or a name: a text, or a number where there is none. Texts come in front of numbers.
struct ResourceName {
    ResourceName(std::uint16_t id) : isNumber(true), number(id) {}  // NOLINT: numbers are names
    explicit ResourceName(std::u16string name) : text(std::move(name)) {}
    auto operator<=>(const ResourceName&) const = default;

    bool isNumber = false;
    std::u16string text;
    std::uint16_t number = 0;
};

// The types that are known here by their numbers.
namespace resourcetype {
constexpr std::uint16_t icon = 3;
constexpr std::uint16_t textBlock = 6;
constexpr std::uint16_t iconGroup = 14;
constexpr std::uint16_t version = 16;
constexpr std::uint16_t manifest = 24;
}  // namespace resourcetype

struct ResourceKey {
    ResourceName type;
    ResourceName name;
    std::uint16_t language;
    auto operator<=>(const ResourceKey&) const = default;
};

// In the order in which a program holds them.
using Resources = std::map<ResourceKey, std::string>;

// Reads the tree at the start of `section`, which the program finds at `address`. Raises
// `PackError` when it is damaged, or no tree of type, name and language.
Resources readResources(std::string_view section, std::uint32_t address);

// The section that holds `resources`. What is alike stands in it once.
std::string writeResources(const Resources& resources, std::uint32_t address);

}  // namespace corvane::pack
