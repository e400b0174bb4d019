// The table at the start of an unpacked archive: what it holds, in the order of the contents behind
// it (docs/runtime.md).
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "foundation/String.h"

namespace corvane {

enum class EntryKind : std::uint8_t { directory = 0, file = 1, program = 2, link = 3 };

// Set in a file's kind when its contents are filtered machine code.
inline constexpr std::uint8_t filteredMark = 0x10;

// The largest table and the largest last file that are unpacked.
inline constexpr std::uint32_t largestArchiveTable = 1 << 24;
inline constexpr std::uint32_t largestJvmFile = 1 << 16;
// The last file of an archive. It tells that all others are there.
inline constexpr const char* archiveJvmFile = "jvm";

struct ArchiveEntry {
    EntryKind kind = EntryKind::directory;
    bool filtered = false;
    std::uint32_t size = 0;  // of a file
    String name;
    String target;  // of a link

    bool isFile() const noexcept { return kind == EntryKind::file || kind == EntryKind::program; }
};

class ArchiveTable {
  public:
    // Takes the table's bytes and checks them whole: each name and link, that the files' sizes make
    // up `contentSize`, and that the last entry is the `jvm` file. Raises `LauncherException`.
    ArchiveTable(std::unique_ptr<char[]> bytes, std::uint32_t size, std::uint32_t contentSize);

    // Calls `take` with each entry.
    template <class Take>
    void forEach(Take take) const {
        ArchiveEntry entry;
        for (std::uint32_t position = 0; position < size_;) {
            read(position, entry);
            take(entry, position == size_);
        }
    }

  private:
    void read(std::uint32_t& position, ArchiveEntry& entry) const;
    std::uint32_t number(std::uint32_t& position, std::uint32_t bytes) const;
    String text(std::uint32_t& position, std::uint32_t length) const;

    std::unique_ptr<char[]> bytes_;
    std::uint32_t size_;
};

}  // namespace corvane
