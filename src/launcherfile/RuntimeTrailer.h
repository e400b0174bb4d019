// The end of a runtime installer: a self-extractor, behind it a packed Java runtime, the place in
// which its author wants it kept, and this trailer (docs/runtime.md).
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <optional>

#include "foundation/String.h"

namespace corvane {

struct RuntimeTrailer {
    std::uint32_t archiveOffset = 0;  // from the start of the file that was read
    std::uint32_t archiveSize = 0;
    std::uint32_t tableSize = 0;    // the part of the unpacked archive that names the files
    std::uint32_t contentSize = 0;  // the rest of it
    String digest;                  // of the archive, in hexadecimal digits: its name
    String place;                   // of the kept runtimes; empty: it is unpacked for each run
};

inline constexpr std::uint32_t runtimeTrailerSize = 40;
inline constexpr auto runtimeMark =
    std::to_array<unsigned char>({0xCA, 'r', 'u', 'n', 't', 1, 0x0D, 0x0A});
inline constexpr std::size_t runtimeDigestBytes = 16;
inline constexpr std::uint32_t longestRuntimePlace = 1024;

// A file of the runtime: a line for each other file, its size, a blank and its name below the
// runtime, with slashes. The `jvm` file and links are not among them.
inline constexpr const char* runtimeFileList = "jvm.files";

// Reads the trailer of an installer that takes up `size` bytes of `file` from `offset`. Nothing if
// it ends in none, or in one that doesn't fit the size.
std::optional<RuntimeTrailer> readRuntimeTrailer(std::FILE* file, std::uint32_t offset,
                                                 std::uint32_t size);

}  // namespace corvane
