// A project: the folder with a manifest, as the commands are given it.
#pragma once

#include <filesystem>
#include <optional>

#include "packer/base/Arguments.h"
#include "packer/project/Manifest.h"

namespace corvane::pack {

struct Project {
    std::filesystem::path manifestPath;
    System system = System::windows;
    Manifest manifest;

    std::filesystem::path folder() const { return manifestPath.parent_path(); }
    // Where a launcher goes that isn't told otherwise: beside the manifest, under its name.
    std::filesystem::path output() const;
};

// The one manifest of the folder `place`, or `place` itself if it is no folder. Raises `PackError`
// when there is no such place, or the
// folder holds none or several.
std::filesystem::path findManifest(const std::filesystem::path& place);

// What is wrong with the manifest goes to `findings`. Raises `PackError`, as `findManifest` does.
Project readProject(const std::filesystem::path& place, System system, Findings& findings);

// The same for a command that needs a manifest without mistakes: they are printed to standard
// error, and raise `PackError`.
Project readSoundProject(const std::filesystem::path& place, System system);

// What is left of a command line that takes a folder or a manifest; the current folder by default.
std::filesystem::path takeProject(Arguments& arguments);

// The value of `--for`, if it is given. Raises `UsageError` for one that is no system.
std::optional<System> takeSystem(Arguments& arguments);

}  // namespace corvane::pack
