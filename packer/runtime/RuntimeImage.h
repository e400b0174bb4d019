// A runtime image, what `jlink` makes, as it goes into an archive.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "packer/payload/Stub.h"
#include "unpacker/ArchiveTable.h"

namespace corvane::pack {

struct ImageEntry {
    EntryKind kind = EntryKind::directory;
    std::string name;              // below the image, with slashes
    std::uint32_t size = 0;        // of a file
    std::filesystem::path source;  // of a file; empty: `text` is what it holds
    std::string text;              // or where a link leads to
    bool machineCode = false;
};

struct RuntimeImage {
    System system = System::windows;
    std::string version;              // of its Java, as 17.0.15
    std::vector<ImageEntry> entries;  // in the order of the archive
    std::uint64_t size = 0;           // of all files
    std::int32_t fileCount = 0;
};

// Reads the image in `directory`, and adds the `jvm` file, unless the image has one of its own, and
// the list of its files and sizes. Raises `PackError` when it is no runtime image, or holds what
// couldn't be unpacked.
RuntimeImage readRuntimeImage(const std::filesystem::path& directory);

// Raises `PackError` when the image, read from `directory`, isn't for `system`.
void checkImageSystem(const RuntimeImage& image, const std::filesystem::path& directory,
                      System system);

}  // namespace corvane::pack
