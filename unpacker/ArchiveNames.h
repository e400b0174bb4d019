// Which names an archive of files may hold, so that nothing lands outside the directory that it is
// unpacked into, on whatever system.
#pragma once

#include <string_view>

namespace corvane {

inline constexpr std::size_t longestArchiveName = 240;

// Whether `name` is a path below a directory, with slashes: of printable ASCII letters, no part of
// it empty, "." or "..", and none that Windows takes for something else, as "nul.txt", "a:b" or
// "a.".
bool isArchiveName(std::string_view name) noexcept;

// Whether a link of that name may lead to `target`: up some directories, as far as the archive
// goes, and then down by names that may stand in it.
bool isArchiveLink(std::string_view name, std::string_view target) noexcept;

}  // namespace corvane
