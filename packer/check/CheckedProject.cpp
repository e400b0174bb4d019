// The reading of a project for the rules.
#include "packer/check/CheckedProject.h"

#include <algorithm>

#include "packer/base/TextFile.h"

namespace corvane::pack {

namespace {

std::string textOf(const ManifestEntry& entry) {
    if (!isTagFile(entry.entry.type))
        return {};
    return entry.path.empty() ? entry.content : readText(entry.path);
}

}  // namespace

const CheckedFile* CheckedProject::first(FileType type) const {
    const auto found = std::ranges::find(files, type, &CheckedFile::type);
    return found == files.end() ? nullptr : &*found;
}

std::vector<const CheckedFile*> CheckedProject::all(FileType type) const {
    std::vector<const CheckedFile*> found;
    for (const CheckedFile& file : files) {
        if (file.type == type)
            found.push_back(&file);
    }
    return found;
}

bool isSound(const CheckedFile& file, const Findings& findings) {
    return std::ranges::none_of(findings.all(), [&](const Finding& finding) {
        return finding.severity == Severity::error && finding.place.file == file.path;
    });
}

CheckedProject readCheckedProject(const Project& project, Findings& findings) {
    CheckedProject checked{project.manifestPath,
                           project.manifest.kind,
                           project.manifest.kindPlace,
                           project.system,
                           {}};
    for (const ManifestEntry& entry : project.manifest.entries) {
        CheckedFile& file = checked.files.emplace_back(entry, textOf(entry));
        if (file.tags.readAll(findings))
            file.tags.checkEnd(findings);
    }
    return checked;
}

}  // namespace corvane::pack
