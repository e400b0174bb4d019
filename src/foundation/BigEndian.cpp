// Readers of the big-endian integers in a launcher's payload.
#include "foundation/BigEndian.h"

#include "foundation/Exceptions.h"

namespace corvane {

namespace {

std::uint32_t readBytes(std::FILE* file, int count, const char* failureMessage) {
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i) {
        const int byte = std::getc(file);
        if (byte == EOF)
            throw LauncherException(failureMessage);
        value = value << 8 | static_cast<std::uint32_t>(byte);
    }
    return value;
}

}  // namespace

std::uint32_t readUInt32BE(std::FILE* file, const char* failureMessage) {
    return readBytes(file, 4, failureMessage);
}

std::uint16_t readUInt16BE(std::FILE* file, const char* failureMessage) {
    return static_cast<std::uint16_t>(readBytes(file, 2, failureMessage));
}

}  // namespace corvane
