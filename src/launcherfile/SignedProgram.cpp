// The certificate table of a Windows program, by its headers.
#include "launcherfile/SignedProgram.h"

#include <array>
#include <cstddef>
#include <cstdint>

#include "foundation/BigEndian.h"
#include "launcherfile/PayloadFormat.h"

namespace corvane {

namespace {

// Positions of the headers' fields; all numbers are little-endian.
constexpr long newHeaderPosition = 0x3C;
constexpr long optionalHeader = 24;  // from the new header's start
constexpr std::uint32_t plainMagic = 0x10B;
constexpr std::uint32_t plusMagic = 0x20B;
// The entry of the certificate table in the list of directories, from the optional header's start.
constexpr long plainCertificates = 128;
constexpr long plusCertificates = 144;
// A signature begins at a multiple of this.
constexpr long alignment = 8;

std::uint32_t readAt(std::FILE* file, long position, std::size_t size) {
    std::array<unsigned char, 4> bytes{};
    if (std::fseek(file, position, SEEK_SET) != 0 ||
        std::fread(bytes.data(), 1, size, file) != size)
        return 0;
    return bytes[0] | static_cast<std::uint32_t>(bytes[1]) << 8 |
           static_cast<std::uint32_t>(bytes[2]) << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

// Position of the certificate table that the headers name, or 0.
long certificateTable(std::FILE* file, long fileSize) {
    constexpr std::uint32_t programMark = 'M' | 'Z' << 8;
    constexpr std::uint32_t newMark = 'P' | 'E' << 8;
    if (readAt(file, 0, 2) != programMark)
        return 0;
    const long header = static_cast<std::int32_t>(readAt(file, newHeaderPosition, 4));
    if (header <= 0 || readAt(file, header, 4) != newMark)
        return 0;
    const std::uint32_t magic = readAt(file, header + optionalHeader, 2);
    if (magic != plainMagic && magic != plusMagic)
        return 0;
    const long entry =
        header + optionalHeader + (magic == plusMagic ? plusCertificates : plainCertificates);
    const std::uint32_t table = readAt(file, entry, 4);
    const std::uint32_t size = readAt(file, entry + 4, 4);
    const bool inside =
        size > 0 && std::uint64_t{table} + size <= static_cast<std::uint64_t>(fileSize);
    return inside ? static_cast<long>(table) : 0;
}

bool endsAt(std::FILE* file, long end) {
    constexpr long identificationSize = 4;
    return std::fseek(file, end - identificationSize, SEEK_SET) == 0 &&
           readUInt32BE(file, "") == identification;
}

}  // namespace

std::int32_t signedPayloadEnd(std::FILE* file) {
    std::fseek(file, 0, SEEK_END);
    const long fileSize = std::ftell(file);
    const long table = certificateTable(file, fileSize);
    for (long end = table; end > table - alignment && end >= trailerSize; --end) {
        if (endsAt(file, end))
            return static_cast<std::int32_t>(end - fileSize);
    }
    return 0;
}

}  // namespace corvane
