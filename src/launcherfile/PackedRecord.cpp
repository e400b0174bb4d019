// The record of the pack tool, and what it is held against.
#include "launcherfile/PackedRecord.h"

#include <algorithm>
#include <array>

#include "base/Messages.h"
#include "base/RunContext.h"
#include "base/Ui.h"
#include "foundation/BigEndian.h"
#include "foundation/Exceptions.h"
#include "launcherfile/PayloadFormat.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

// Volatile, since the tool writes to it behind the compiler's back.
const volatile PackedRecord packedRecord = {packedMarker, {}, {}};

std::uint32_t readNumber(const volatile unsigned char (&bytes)[4]) noexcept {
    std::uint32_t value = 0;
    for (const volatile unsigned char& byte : bytes)
        value = value << 8 | byte;
    return value;
}

// What each value of half a byte does to a checksum. Made anew each time, in less time than twenty
// bytes took without it, it takes no room in the program.
std::array<std::uint32_t, 16> halfByteTable() noexcept {
    constexpr std::uint32_t polynomial = 0xEDB88320;
    std::array<std::uint32_t, 16> table;
    for (std::uint32_t i = 0; i < table.size(); ++i) {
        std::uint32_t value = i;
        for (int bit = 0; bit < 4; ++bit)
            value = value >> 1 ^ (polynomial & -(value & 1));
        table[i] = value;
    }
    return table;
}

// The checksum of the bytes from `start` to `end`; false when there are fewer.
bool checksumOf(std::FILE* file, long start, long end, std::uint32_t& checksum) {
    char block[4096];
    checksum = 0;
    std::fseek(file, start, SEEK_SET);
    while (start < end) {
        const auto wanted = static_cast<std::size_t>(std::min<long>(end - start, sizeof block));
        if (std::fread(block, 1, wanted, file) != wanted)
            return false;
        checksum = crc32(block, wanted, checksum);
        start += static_cast<long>(wanted);
    }
    return true;
}

}  // namespace

std::uint32_t crc32(const void* bytes, std::size_t size, std::uint32_t former) noexcept {
    const auto ofHalfByte = halfByteTable();
    const auto* byte = static_cast<const unsigned char*>(bytes);
    std::uint32_t value = ~former;
    for (const unsigned char* const end = byte + size; byte != end; ++byte) {
        value ^= *byte;
        value = value >> 4 ^ ofHalfByte[value & 15];
        value = value >> 4 ^ ofHalfByte[value & 15];
    }
    return ~value;
}

void checkPackedRecord() {
    const std::uint32_t length = readNumber(packedRecord.length);
    if (length == 0)
        return;
    const StreamGuard file(openStream(runContext().launcherPath.cstr(), "rb"));
    if (!file || isWhole(file.get(), length, readNumber(packedRecord.checksum)))
        return;
    // Nothing that would name the program has been read.
    uiApplyTitle({});
    throw LauncherException(loadMessage(MessageId::damaged));
}

bool isWhole(std::FILE* file, std::uint32_t length, std::uint32_t checksum) {
    const auto end = static_cast<long>(length);
    if (std::fseek(file, 0, SEEK_END) != 0 || std::ftell(file) < end ||
        std::fseek(file, end - trailerSizeBehindKind, SEEK_SET) != 0)
        return false;
    const auto start = static_cast<std::int32_t>(readUInt32BE(file, ""));
    std::uint32_t found = 0;
    return start >= 0 && start < end && checksumOf(file, start, end, found) && found == checksum;
}

}  // namespace corvane
