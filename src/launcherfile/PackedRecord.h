// What the pack tool leaves in the program itself about the payload that it appended, so that a
// launcher that lost bytes behind can tell. The tool finds the record by its marker.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace corvane {

// Big-endian numbers; both 0 in a bare program.
struct PackedRecord {
    std::array<char, 24> marker;
    unsigned char length[4];    // of the launcher file, up to the end of its trailer
    unsigned char checksum[4];  // of index and trailer
};

// The marker, which stands in a program once.
inline constexpr auto packedMarker = std::to_array("corvane packed record 1");

// The usual CRC-32, of a text that goes on from a part whose value is `former`.
std::uint32_t crc32(const void* bytes, std::size_t size, std::uint32_t former = 0) noexcept;

// Raises a `LauncherException` when the file of the running program no longer holds what it was
// packed with: it is shorter, or index or trailer are others. A program that wasn't packed by the
// tool passes.
void checkPackedRecord();

// Whether a launcher file still holds what it was packed with.
bool isWhole(std::FILE* file, std::uint32_t length, std::uint32_t checksum);

}  // namespace corvane
