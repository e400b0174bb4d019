// Readers of the big-endian integers in a launcher's payload.
#pragma once

#include <cstdint>
#include <cstdio>

namespace corvane {

// The next four (two) bytes of `file`, most significant first. A short read raises a
// `LauncherException` that carries `failureMessage`.
std::uint32_t readUInt32BE(std::FILE* file, const char* failureMessage);
std::uint16_t readUInt16BE(std::FILE* file, const char* failureMessage);

}  // namespace corvane
