// Rules for what a manifest puts together.
#include "packer/check/PayloadRules.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace corvane::pack {

namespace {

// The kinds that the launcher tells apart; every other one is as any other.
constexpr int knownKinds[] = {0, 1, 2, 128};

// The files of which only the first counts.
constexpr FileType singleTypes[] = {FileType::instructions, FileType::launchScript,
                                    FileType::jvmInstaller, FileType::jvmMessage};

std::ptrdiff_t countOf(const Manifest& manifest, FileType type) {
    return std::ranges::count_if(
        manifest.entries, [type](const ManifestEntry& file) { return file.entry.type == type; });
}

void checkMissing(const CheckedProject& project, Findings& findings) {
    const Place whole{project.project.manifestPath, 0, 0};
    const Manifest& manifest = project.project.manifest;
    if (countOf(manifest, FileType::instructions) == 0)
        findings.error("no-script", whole, "no INSTRUCTIONS: the launcher would do nothing",
                       "INSTRUCTIONS: <standard>");
    if (countOf(manifest, FileType::launchScript) == 0 &&
        countOf(manifest, FileType::embeddedLauncher) == 0)
        findings.error("no-launch-script", whole,
                       "no LAUNCHSCRIPT: nothing says how the application is started",
                       "name a file with a COMMAND");
}

void checkDoubled(const CheckedProject& project, Findings& findings) {
    for (const FileType type : singleTypes) {
        bool first = true;
        for (const ManifestEntry& file : project.project.manifest.entries) {
            if (file.entry.type != type)
                continue;
            if (!first)
                findings.warning(
                    "only-first-counts", file.place,
                    std::string("of several ") + typeName(type) + " only the first counts");
            first = false;
        }
    }
}

void checkKind(const CheckedProject& project, Findings& findings) {
    const Manifest& manifest = project.project.manifest;
    if (std::ranges::find(knownKinds, manifest.kind) == std::end(knownKinds))
        findings.warning("kind", manifest.kindPlace,
                         "kind " + std::to_string(manifest.kind) +
                             " is none that the launcher knows: it is as 1",
                         "0 shows a tall dialog, 1 and 2 a short one");
}

}  // namespace

void checkPayload(const CheckedProject& project, Findings& findings) {
    checkMissing(project, findings);
    checkDoubled(project, findings);
    checkKind(project, findings);
}

}  // namespace corvane::pack
