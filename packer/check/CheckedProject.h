// A project as the rules see it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <string>

#include "launcherfile/PayloadFormat.h"
#include "packer/base/Findings.h"
#include "packer/project/PlacedTags.h"
#include "packer/project/Project.h"

namespace corvane::pack {

// An embedded tag file that the launcher can read.
struct CheckedFile {
    CheckedFile(const ManifestEntry& entry, std::filesystem::path filePath, std::string text)
        : type(entry.entry.type),
          id(entry.entry.id),
          name(entry.entry.name),
          path(std::move(filePath)),
          tags(path, std::move(text)) {}

    FileType type;
    std::int32_t id;
    std::string name;
    std::filesystem::path path;  // its word, if it ships with the tool
    PlacedTags tags;

    // Where a tag stands, or what is `offset` bytes into its value.
    Place place(const char* tag) const { return tags.placeOf(tag); }
    Place place(const char* tag, int index, std::size_t offset = 0) const {
        return tags.placeOf(tag, index, offset);
    }
};

struct CheckedProject {
    Project project;
    std::deque<CheckedFile> files;  // in the order of the manifest

    // The first one of a type, which is the one that counts where one does, or null.
    const CheckedFile* first(FileType type) const;
};

// Reads the tag files of a project. What is wrong with one as a tag file goes to `findings`, and it
// is left out then.
CheckedProject readCheckedProject(Project project, Findings& findings);

}  // namespace corvane::pack
