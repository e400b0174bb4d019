// Zip archives, as far as jars use them: stored and deflated entries of one file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::pack {

struct ZipEntry {
    std::string name;
    std::uint32_t method = 0;
    std::uint32_t checksum = 0;
    std::uint32_t packedSize = 0;
    std::uint32_t size = 0;
    std::size_t position = 0;  // of its header, in the file
    bool encrypted = false;
};

// The directory of an archive in memory. Nothing in it is trusted: each position and size is held
// against the bytes that are there, and no entry is larger than its packed bytes allow.
class ZipArchive {
  public:
    // `name` is what errors call the archive; `bytes` outlive it. Raises `PackError` when this is
    // no archive, or a damaged one.
    ZipArchive(std::string name, std::string_view bytes);

    const std::vector<ZipEntry>& entries() const { return entries_; }
    // The last entry of that name, which is the one that Java takes, or nothing.
    const ZipEntry* find(std::string_view name) const;
    // What the entry holds, its checksum checked. Raises `PackError` when it is damaged, or packed
    // in a way that Java doesn't read, either.
    std::string read(const ZipEntry& entry) const;

  private:
    struct Directory {
        std::uint64_t entryCount;
        std::uint64_t size;
        std::uint64_t position;
        std::size_t end;  // where the record stands that tells of it
    };
    Directory findDirectory() const;
    Directory findLargeDirectory(const Directory& small) const;
    void readDirectory(const Directory& directory);
    std::size_t readEntry(std::size_t at, std::size_t shift);
    std::string_view packedBytes(const ZipEntry& entry) const;
    std::string inflate(const ZipEntry& entry, std::string_view packed) const;
    [[noreturn]] void fail(const std::string& what) const;
    [[noreturn]] void fail(const ZipEntry& entry, const std::string& what) const;
    std::string_view part(std::uint64_t at, std::uint64_t size, const char* what) const;

    std::string name_;
    std::string_view bytes_;
    std::vector<ZipEntry> entries_;
};

}  // namespace corvane::pack
