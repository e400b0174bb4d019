// Reading of a project's tag files.
#include "packer/check/CheckedProject.h"

#include <algorithm>

#include "packer/base/Paths.h"
#include "packer/base/TextFile.h"

namespace corvane::pack {

const CheckedFile* CheckedProject::first(FileType type) const {
    const auto found = std::ranges::find(files, type, &CheckedFile::type);
    return found == files.end() ? nullptr : &*found;
}

CheckedProject readCheckedProject(Project project, Findings& findings) {
    CheckedProject checked{std::move(project), {}};
    for (const ManifestEntry& file : checked.project.manifest.entries) {
        if (!isTagFile(file.entry.type))
            continue;
        const bool shipped = file.path.empty();
        const std::filesystem::path path = shipped ? pathOf(file.word) : file.path;
        checked.files.emplace_back(file, path, shipped ? file.content : readText(path));
        checked.files.back().tags.checkEnd(findings);
        if (!checked.files.back().tags.readAll(findings))
            checked.files.pop_back();
    }
    return checked;
}

}  // namespace corvane::pack
