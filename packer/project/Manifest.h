// The manifest: a tag file that names what goes into a launcher (docs/packing.md).
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "packer/base/Findings.h"
#include "packer/face/Face.h"
#include "packer/payload/PayloadWriter.h"
#include "packer/project/Shipped.h"

namespace corvane::pack {

// The name of a file type in manifests and listings.
const char* typeName(FileType type);

// One embedded file: its entry, and where its bytes come from.
struct ManifestEntry {
    PayloadEntry entry;
    Place place;                 // in the manifest; of what it leaves unsaid, the file
    std::filesystem::path path;  // empty for what ships with the tool: `content` has the bytes
    std::string word;            // by which the manifest names what ships with the tool
    std::string content;
    std::filesystem::path image;  // a Java runtime from which `content` is made at the packing
};

struct Manifest {
    std::uint8_t kind = 0;
    Place kindPlace;
    std::vector<ManifestEntry> entries;  // in the order of the index
    Face face;
    std::string keepPlace;  // of the Java runtime between runs; empty for none
};

// Reads a manifest. Adds the verification class unless the manifest says otherwise. Words stand for
// what ships with the tool for `system`. What is wrong with it goes to `findings`, and what is
// right of it comes back.
Manifest readManifest(const std::filesystem::path& path, System system, Findings& findings);

// Appends all files of a manifest. Raises `PackError`.
void appendFiles(const Manifest& manifest, PayloadWriter& writer);

}  // namespace corvane::pack
