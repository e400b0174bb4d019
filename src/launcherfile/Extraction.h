// What the copying of embedded files to disk needs to know of the disk.
#pragma once

#include <cstdint>

#include "foundation/String.h"

namespace corvane {

// Whether the drive of `directory` (the current drive, if it names none) has room for `size` bytes
// in `fileCount` files, by an estimate in whole clusters. Raises `LauncherException`.
bool hasDiskSpace(const String& directory, std::uint32_t size, std::int32_t fileCount);

// Whether a file is there, also one that somebody has open. A directory is no file. A reason other
// than its absence is logged.
bool fileExists(const String& path);

}  // namespace corvane
