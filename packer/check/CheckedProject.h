// A project with its tag files read, as the rules see it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <string>
#include <vector>

#include "packer/base/Findings.h"
#include "packer/project/PlacedTags.h"
#include "packer/project/Project.h"

namespace corvane::pack {

struct CheckedFile {
    CheckedFile(const ManifestEntry& entry, std::string text)
        : type(entry.entry.type),
          id(entry.entry.id),
          name(entry.entry.name),
          path(entry.path),
          inManifest(entry.place),
          tags(path, std::move(text)) {}

    FileType type;
    std::int32_t id;
    std::string name;
    std::filesystem::path path;  // empty for what ships with the tool
    Place inManifest;
    PlacedTags tags;  // of a tag file

    // The place of a byte of a value; in the manifest for what ships with the tool.
    Place place(const std::string& tag, std::size_t index = 0, std::size_t offset = 0) const {
        return path.empty() ? inManifest : tags.place(tag, index, offset);
    }
};

struct CheckedProject {
    std::filesystem::path manifestPath;
    std::uint8_t kind = 0;
    Place kindPlace;
    System system = System::windows;
    std::deque<CheckedFile> files;  // in the order of the index

    // The first file of a type, which is the one that counts where one does; null without one.
    const CheckedFile* first(FileType type) const;
    std::vector<const CheckedFile*> all(FileType type) const;
};

// Whether nothing is known to be wrong in a file, so that it says what its author meant.
bool isSound(const CheckedFile& file, const Findings& findings);

// Reads the tag files of a project whose manifest is sound. What is wrong with one as a tag file
// goes to `findings`.
CheckedProject readCheckedProject(const Project& project, Findings& findings);

}  // namespace corvane::pack
