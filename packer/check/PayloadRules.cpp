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

void checkMissing(const CheckedProject& project, Findings& findings) {
    const Place whole{project.manifestPath, 0, 0};
    if (project.first(FileType::instructions) == nullptr)
        findings.error("no-script", whole, "no INSTRUCTIONS: the launcher would do nothing",
                       "INSTRUCTIONS: <standard>");
    if (project.first(FileType::launchScript) == nullptr &&
        project.first(FileType::embeddedLauncher) == nullptr)
        findings.error("no-launch-script", whole,
                       "no LAUNCHSCRIPT: nothing says how the application is started",
                       "name a file with a COMMAND");
}

void checkDoubled(const CheckedProject& project, Findings& findings) {
    for (const FileType type : singleTypes) {
        const std::vector<const CheckedFile*> files = project.all(type);
        for (std::size_t i = 1; i < files.size(); ++i)
            findings.warning("only-first-counts", files[i]->inManifest,
                             std::string("of several ") + typeName(type) + " the first one counts",
                             "leave the others out");
    }
}

void checkKind(const CheckedProject& project, Findings& findings) {
    if (std::ranges::find(knownKinds, project.kind) == std::end(knownKinds))
        findings.warning(
            "kind", project.kindPlace,
            "kind " + std::to_string(project.kind) + " is none that the launcher knows: it is as 1",
            "0 shows a tall dialog, 1 and 2 a short one");
}

}  // namespace

void checkPayload(const CheckedProject& project, Findings& findings) {
    checkMissing(project, findings);
    checkDoubled(project, findings);
    checkKind(project, findings);
}

}  // namespace corvane::pack
