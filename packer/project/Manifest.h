// The manifest: a tag file that names what goes into a launcher (docs/packing.md).
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "packer/payload/PayloadWriter.h"
#include "packer/project/Shipped.h"

namespace corvane::pack {

// The name of a file type in manifests and listings.
const char* typeName(FileType type);

// One embedded file: its entry, and where its bytes come from.
struct ManifestEntry {
    PayloadEntry entry;
    std::filesystem::path path;  // empty for what ships with the tool: `content` has the bytes
    int line = 0;                // of the manifest
    std::string word;            // by which the manifest names what ships with the tool
    std::string content;
};

struct Manifest {
    std::uint8_t kind = 0;
    std::vector<ManifestEntry> entries;  // in the order of the index
};

// Reads and checks a manifest and the files that it names: they exist, and those that are tag files
// parse and end with a line feed. Adds the verification class unless the manifest says otherwise.
// Words stand for what ships with the tool for `system`. Raises `PackError` with file and line.
Manifest readManifest(const std::filesystem::path& path, System system = System::windows);

}  // namespace corvane::pack
