// Finding of a project's manifest, and what follows from it.
#include "packer/project/Project.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "packer/base/Errors.h"
#include "packer/base/Paths.h"

namespace corvane::pack {

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> manifestsIn(const fs::path& folder) {
    std::vector<fs::path> manifests;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == ".manifest" && entry.is_regular_file())
            manifests.push_back(entry.path().filename());
    }
    std::ranges::sort(manifests);
    return manifests;
}

}  // namespace

fs::path findManifest(const fs::path& place) {
    if (!fs::exists(place))
        throw PackError(place.string() + ": there is no such folder or manifest");
    if (!fs::is_directory(place))
        return place;
    const std::vector<fs::path> manifests = manifestsIn(place);
    if (manifests.empty())
        throw PackError(place.string() + ": no *.manifest is in this folder; corvane-pack new " +
                        "makes a project from a jar");
    if (manifests.size() > 1) {
        std::string names;
        for (const fs::path& manifest : manifests)
            names += (names.empty() ? "" : ", ") + manifest.string();
        throw PackError(place.string() + ": several manifests are in this folder; name one of " +
                        names);
    }
    // A plain name in messages for what lies in the current folder.
    return place == "." ? manifests[0] : place / manifests[0];
}

fs::path Project::output() const {
    fs::path path = manifestPath;
    return path.replace_extension(system == System::windows ? ".exe" : "");
}

Project readProject(const fs::path& place, System system, Findings& findings) {
    const fs::path manifestPath = findManifest(place);
    return {manifestPath, system, readManifest(manifestPath, system, findings)};
}

Project readSoundProject(const fs::path& place, System system) {
    Findings findings;
    Project project = readProject(place, system, findings);
    findings.print(std::cerr);
    if (findings.hasErrors())
        throw PackError("the manifest has mistakes");
    return project;
}

fs::path takeProject(Arguments& arguments) {
    const std::vector<std::string> rest = arguments.takeRest(0, 1, "");
    return rest.empty() ? fs::path(".") : pathOf(rest[0]);
}

std::optional<System> takeSystem(Arguments& arguments) {
    const std::optional<std::string> name = arguments.takeValue("--for");
    if (!name)
        return std::nullopt;
    if (*name == "windows")
        return System::windows;
    if (*name == "host")
        return System::host;
    throw UsageError("--for is followed by windows or host, not by " + *name);
}

}  // namespace corvane::pack
