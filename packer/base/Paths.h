// File names as the user gives them.
#pragma once

#include <filesystem>
#include <string>

namespace corvane::pack {

// `text` as a path. It is UTF-8 on every system, which a path's own constructor takes for another
// encoding on Windows.
inline std::filesystem::path pathOf(const std::string& text) {
    return std::u8string(text.begin(), text.end());
}

}  // namespace corvane::pack
