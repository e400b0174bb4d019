// Whole files as texts.
#pragma once

#include <filesystem>
#include <string>

namespace corvane::pack {

// The bytes of a file. Raises `PackError` when it can't be read; some systems would open a
// directory, too.
std::string readText(const std::filesystem::path& path);

}  // namespace corvane::pack
