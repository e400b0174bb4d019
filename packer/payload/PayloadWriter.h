// Writing of a launcher file: program, embedded files, index, trailer (docs/payload.md).
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "launcherfile/PayloadFormat.h"
#include "packer/base/Errors.h"

namespace corvane::pack {

// Offsets in a launcher file are signed numbers of 32 bits.
constexpr std::uint64_t sizeLimit = std::uint64_t{1} << 31;
constexpr const char* tooLarge =
    "the launcher would reach 2 GiB, the most that its format can hold";

// What an embedded file unpacks to.
struct Decompressed {
    std::int32_t fileCount = 0;
    std::int32_t size = 0;
};

// What the index says of an embedded file, but for its place.
struct PayloadEntry {
    FileType type = FileType::instructions;
    std::int32_t id = 0;
    std::string name;
    std::optional<Decompressed> decompressed;
};

// The size of a launcher file, and the checksum of its index and trailer.
struct Seal {
    std::uint32_t length;
    std::uint32_t checksum;
};

// Writes the parts in their order to a binary stream that stays the caller's. Raises `PackError`
// when the stream fails or the file would reach 2 GiB.
class PayloadWriter {
  public:
    // `onProgress`, if there is one, is told what has been written so far.
    explicit PayloadWriter(std::ostream& out,
                           std::function<void(std::uint64_t size)> onProgress = {})
        : out_(out), onProgress_(std::move(onProgress)) {}

    // Copies the bare program.
    void appendProgram(std::istream& program);
    // Copies an embedded file and notes its entry.
    void appendFile(const PayloadEntry& entry, std::istream& content);
    // Writes index and trailer, and gives what can be held against the file later.
    Seal finish(std::uint8_t kind);

  private:
    struct Placed {
        PayloadEntry entry;
        std::uint32_t length;
        std::uint32_t offset;
    };

    std::uint32_t copy(std::istream& in);
    void write(const std::string& bytes);

    std::ostream& out_;
    std::function<void(std::uint64_t size)> onProgress_;
    std::uint64_t position_ = 0;
    std::vector<Placed> files_;
};

}  // namespace corvane::pack
