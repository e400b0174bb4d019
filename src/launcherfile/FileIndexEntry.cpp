// Reading of one index entry.
#include "launcherfile/FileIndexEntry.h"

#include "foundation/BigEndian.h"
#include "foundation/Exceptions.h"

namespace corvane {

namespace {

std::int32_t readInt32(std::FILE* stream, const char* failureMessage) {
    return static_cast<std::int32_t>(readUInt32BE(stream, failureMessage));
}

// A size or position: never negative, since a launcher file stays below 2 GiB.
std::int32_t readExtent(std::FILE* stream, const char* failureMessage, const char* badMessage) {
    const std::int32_t value = readInt32(stream, failureMessage);
    if (value < 0)
        throw LauncherException(badMessage);
    return value;
}

String readName(std::FILE* stream) {
    constexpr const char* failureMessage = "Unable to load the string value.";
    const auto length = static_cast<std::int16_t>(readUInt16BE(stream, failureMessage));
    if (length < 0)
        throw LauncherException(failureMessage);
    const auto buffer = std::make_unique<char[]>(static_cast<std::size_t>(length) + 1);
    // A short name is no error. A line read of nothing isn't the same everywhere.
    if (length > 0 && std::fgets(buffer.get(), length + 1, stream) == nullptr)
        return {};
    return buffer.get();
}

}  // namespace

void FileIndexEntry::read(std::FILE* stream) {
    const int typeByte = std::getc(stream);
    if (typeByte == EOF || static_cast<std::uint32_t>(typeByte) > highestFileType)
        throw LauncherException("Invalid file type in file index.");
    type = static_cast<FileType>(typeByte);
    id = readInt32(stream, "Unable to load file id.");
    length =
        readExtent(stream, "Unable to load file length.", "Invalid file length in file index.");
    offset = readExtent(stream, "Unable to load offset to file bytes.",
                        "Invalid offset to file bytes in file index.");
    name = readName(stream);
    hasDecompressedInfo = std::getc(stream) == 1;
    if (hasDecompressedInfo) {
        decompressedFileCount = readInt32(stream, "Unable to load decompressed file count.");
        decompressedSize = readInt32(stream, "Unable to load decompressed size.");
    }
}

void FileIndexEntry::loadTags(std::FILE* stream) {
    if (!isTagFile(type))
        return;
    tags = std::make_unique<TagFile>();
    tags->read(stream, name, offset, length);
}

}  // namespace corvane
