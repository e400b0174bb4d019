// Reading of a runtime installer's end.
#include "launcherfile/RuntimeTrailer.h"

#include <cstring>

#include "foundation/BigEndian.h"
#include "foundation/Exceptions.h"

namespace corvane {

namespace {

constexpr const char* cutShort = "The Java runtime is cut short.";

bool seek(std::FILE* file, std::uint32_t position) {
    return std::fseek(file, static_cast<long>(position), SEEK_SET) == 0;
}

String readText(std::FILE* file, std::uint32_t size) {
    char text[longestRuntimePlace];
    if (std::fread(text, 1, size, file) != size)
        throw LauncherException(cutShort);
    return {text, size};
}

String readDigest(std::FILE* file) {
    constexpr const char* digits = "0123456789abcdef";
    const String bytes = readText(file, runtimeDigestBytes);
    String digest;
    for (const char byte : bytes.view()) {
        const auto value = static_cast<unsigned char>(byte);
        digest.append(digits[value >> 4]).append(digits[value & 15]);
    }
    return digest;
}

}  // namespace

std::optional<RuntimeTrailer> readRuntimeTrailer(std::FILE* file, std::uint32_t offset,
                                                 std::uint32_t size) {
    const std::uint32_t end = offset + size;
    if (size < runtimeTrailerSize || !seek(file, end - runtimeTrailerSize))
        return {};
    RuntimeTrailer trailer;
    trailer.archiveSize = readUInt32BE(file, cutShort);
    trailer.tableSize = readUInt32BE(file, cutShort);
    trailer.contentSize = readUInt32BE(file, cutShort);
    const std::uint32_t placeSize = readUInt32BE(file, cutShort);
    trailer.digest = readDigest(file);
    const String mark = readText(file, runtimeMark.size());
    const std::uint32_t room = size - runtimeTrailerSize;
    if (std::memcmp(mark.cstr(), runtimeMark.data(), runtimeMark.size()) != 0 ||
        placeSize > longestRuntimePlace || placeSize > room ||
        trailer.archiveSize > room - placeSize)
        return {};
    trailer.archiveOffset = end - runtimeTrailerSize - placeSize - trailer.archiveSize;
    if (!seek(file, end - runtimeTrailerSize - placeSize))
        return {};
    trailer.place = readText(file, placeSize);
    return trailer;
}

}  // namespace corvane
