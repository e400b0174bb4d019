// Writing of a launcher file.
#include "packer/payload/PayloadWriter.h"

#include <istream>
#include <ostream>

#include "launcherfile/PackedRecord.h"

namespace corvane::pack {

namespace {

void putInteger(std::string& bytes, std::uint32_t value, int size) {
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
        bytes.push_back(static_cast<char>(value >> shift & 0xFF));
}

}  // namespace

void PayloadWriter::appendProgram(std::istream& program) {
    copy(program);
}

void PayloadWriter::appendFile(const PayloadEntry& entry, std::istream& content) {
    const auto offset = static_cast<std::uint32_t>(position_);
    const std::uint32_t length = copy(content);
    files_.push_back({entry, length, offset});
}

Seal PayloadWriter::finish(std::uint8_t kind) {
    const auto indexOffset = static_cast<std::uint32_t>(position_);
    std::string bytes;
    putInteger(bytes, static_cast<std::uint32_t>(files_.size()), 4);
    for (const auto& [entry, length, offset] : files_) {
        putInteger(bytes, static_cast<std::uint32_t>(entry.type), 1);
        putInteger(bytes, static_cast<std::uint32_t>(entry.id), 4);
        putInteger(bytes, length, 4);
        putInteger(bytes, offset, 4);
        putInteger(bytes, static_cast<std::uint32_t>(entry.name.size()), 2);
        bytes += entry.name;
        putInteger(bytes, entry.decompressed.has_value(), 1);
        if (entry.decompressed) {
            putInteger(bytes, static_cast<std::uint32_t>(entry.decompressed->fileCount), 4);
            putInteger(bytes, static_cast<std::uint32_t>(entry.decompressed->size), 4);
        }
    }
    putInteger(bytes, kind, 1);
    putInteger(bytes, indexOffset, 4);
    putInteger(bytes, identification, 4);
    write(bytes);
    out_.flush();
    if (!out_)
        throw PackError("the file could not be written");
    return {static_cast<std::uint32_t>(position_), crc32(bytes.data(), bytes.size())};
}

// Copies the rest of `in` and gives its size.
std::uint32_t PayloadWriter::copy(std::istream& in) {
    const std::uint64_t start = position_;
    std::string block(65536, '\0');
    while (in.read(block.data(), static_cast<std::streamsize>(block.size())), in.gcount() > 0)
        write(block.substr(0, static_cast<std::size_t>(in.gcount())));
    if (in.bad())
        throw PackError("the file could not be read");
    return static_cast<std::uint32_t>(position_ - start);
}

void PayloadWriter::write(const std::string& bytes) {
    position_ += bytes.size();
    if (position_ >= sizeLimit)
        throw PackError(tooLarge);
    out_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out_)
        throw PackError("the file could not be written");
    if (onProgress_)
        onProgress_(position_);
}

}  // namespace corvane::pack
