// The search for the trailer.
#include "launcherfile/LauncherKind.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <memory>

#include "base/RunContext.h"
#include "foundation/Exceptions.h"
#include "launcherfile/PayloadFormat.h"
#include "launcherfile/SignedProgram.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

constexpr long identificationSize = 4;
constexpr long blockSize = 65536;

// The identification value, last byte first: a program that holds it as it stands would look like
// one with a payload. Volatile, so that no compiler makes a constant of it that does, or one of 16
// bytes.
const volatile unsigned char reversed[identificationSize] = {
    identification & 0xFF, identification >> 8 & 0xFF, identification >> 16 & 0xFF,
    identification >> 24 & 0xFF};

bool isIdentification(const unsigned char* bytes) {
    return std::equal(std::rbegin(reversed), std::rend(reversed), bytes);
}

// Bytes that are looked at together: 64 places where a value may begin, and one byte behind them.
constexpr long stretchSize = 65;

// Whether the value's first two bytes stand next to each other anywhere in the stretch.
bool mayHold(const unsigned char* stretch) {
    using Bytes = unsigned char __attribute__((vector_size(16)));
    const Bytes firstByte = Bytes{} + reversed[3];
    const Bytes secondByte = Bytes{} + reversed[2];
    Bytes any{};
    for (std::size_t i = 0; i + 1 < stretchSize; i += sizeof(Bytes)) {
        Bytes first;
        Bytes second;
        std::memcpy(&first, stretch + i, sizeof first);
        std::memcpy(&second, stretch + i + 1, sizeof second);
        any |= reinterpret_cast<Bytes>((first == firstByte) & (second == secondByte));
    }
    std::array<std::uint64_t, 2> halves{};
    std::memcpy(&halves, &any, sizeof halves);
    return (halves[0] | halves[1]) != 0;
}

// Position behind the last identification value in the block, or -1.
long lastIdentificationEnd(const unsigned char* block, long size) {
    for (long end = size; end >= identificationSize;) {
        if (end >= stretchSize && !mayHold(block + end - stretchSize)) {
            // The first bytes may end a value.
            end -= stretchSize - identificationSize + 1;
            continue;
        }
        if (isIdentification(block + end - identificationSize))
            return end;
        --end;
    }
    return -1;
}

// Position behind the last identification value in the file, or -1. A launcher ends with it, so the
// first block is no larger than the value; those in front of it are read only if it isn't there.
long findIdentificationEnd(std::FILE* file, long fileSize) {
    const auto block = std::make_unique_for_overwrite<unsigned char[]>(blockSize);
    long wanted = identificationSize;
    for (long end = fileSize; end >= identificationSize;) {
        const long begin = std::max(end - wanted, 0L);
        const auto size = static_cast<std::size_t>(end - begin);
        if (std::fseek(file, begin, SEEK_SET) != 0 ||
            std::fread(block.get(), 1, size, file) != size)
            return -1;
        const long found = lastIdentificationEnd(block.get(), end - begin);
        if (found >= 0)
            return begin + found;
        if (begin == 0)
            return -1;
        // A value that the block cuts in two is whole in the next one.
        end = begin + identificationSize - 1;
        wanted = blockSize;
    }
    return -1;
}

std::int32_t readKind(std::FILE* file) {
    RunContext& context = runContext();
    std::fseek(file, 0, SEEK_END);
    const long fileSize = std::ftell(file);
    const long end = findIdentificationEnd(file, fileSize);
    if (end < 0 && fileSize < 2 * identificationSize)
        throw LauncherException("Unable to read launcher identification value.");
    context.trailerOffset = end < 0 ? 0 : static_cast<std::int32_t>(end - fileSize);
    if (std::fseek(file, context.trailerOffset - trailerSize, SEEK_END) != 0)
        return -1;
    return std::getc(file);
}

// Whether a trailer of that kind ends at `end`, counted from the end of the file.
bool isTrailer(std::FILE* file, long end, std::int32_t kind) {
    std::array<unsigned char, trailerSize> trailer{};
    return std::fseek(file, end - trailerSize, SEEK_END) == 0 &&
           std::fread(trailer.data(), 1, trailer.size(), file) == trailer.size() &&
           trailer.front() == kind &&
           isIdentification(trailer.data() + trailerSize - identificationSize);
}

}  // namespace

std::int32_t launcherKind(const char* path) {
    RunContext& context = runContext();
    const bool own = context.launcherPath == path;
    if (own && context.launcherKindCache != -1)
        return context.launcherKindCache;
    const StreamGuard file(openStream(path, "rb"));
    if (!file)
        return -1;
    // Whole blocks go past the stream's own buffer.
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    const std::int32_t kind = readKind(file.get());
    if (own)
        context.launcherKindCache = kind;
    return kind;
}

bool isToolLauncher(const char* path) {
    const StreamGuard file(openStream(path, "rb"));
    if (!file)
        return false;
    if (isTrailer(file.get(), 0, toolKind))
        return true;
    const std::int32_t end = signedPayloadEnd(file.get());
    return end != 0 && isTrailer(file.get(), end, toolKind);
}

}  // namespace corvane
