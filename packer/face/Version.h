// The version information of a Windows program.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::pack {

struct VersionInfo {
    std::array<std::uint16_t, 4> numbers{};
    // "CompanyName" and so on, each with its text.
    std::vector<std::pair<std::u16string_view, std::u16string>> texts;
};

// The numbers at the front of a version such as "1.4.2-beta": one to four of at most 65535, the
// missing ones 0. Raises `PackError` when it begins with none or goes on with more.
std::array<std::uint16_t, 4> versionNumbers(const std::string& version);

// The resource, with texts that serve for every language.
std::string writeVersion(const VersionInfo& info);

}  // namespace corvane::pack
