// `corvane-pack eject`.
#include <algorithm>
#include <fstream>
#include <iostream>
#include <sstream>

#include "packer/base/Errors.h"
#include "packer/base/Findings.h"
#include "packer/base/Paths.h"
#include "packer/base/WholeFile.h"
#include "packer/commands/Command.h"
#include "packer/project/Project.h"

namespace corvane::pack {

namespace {

namespace fs = std::filesystem;

using Entries = std::vector<const ManifestEntry*>;

// A word may be given without its brackets, which command processors take for something else.
std::string withBrackets(const std::string& word) {
    return isShippedWord(word) ? word : '<' + word + '>';
}

Entries entriesWith(const Manifest& manifest, const std::string& word) {
    Entries entries;
    for (const ManifestEntry& entry : manifest.entries) {
        if (!entry.word.empty() && (word.empty() || entry.word == word))
            entries.push_back(&entry);
    }
    return entries;
}

std::vector<std::string> wordsOf(const Manifest& manifest) {
    std::vector<std::string> words;
    for (const ManifestEntry* entry : entriesWith(manifest, ""))
        words.push_back(entry->word);
    return words;
}

// What is to be written out: all, or what `words` name.
Entries chosen(const Project& project, const std::vector<std::string>& words) {
    if (words.empty())
        return entriesWith(project.manifest, "");
    Entries entries;
    for (const std::string& each : words) {
        const std::string word = withBrackets(each);
        const Entries found = entriesWith(project.manifest, word);
        if (found.empty()) {
            const std::string meant = didYouMean(word, wordsOf(project.manifest));
            throw PackError(project.manifestPath.string() + ": " + word + " is not used here" +
                            (meant.empty() ? "" : "; " + meant));
        }
        entries.insert(entries.end(), found.begin(), found.end());
    }
    return entries;
}

// A file that is there already stays, unless it is what would be written.
void checkPlaces(const Project& project, const Entries& entries) {
    for (const ManifestEntry* entry : entries) {
        const fs::path path = project.folder() / entry->entry.name;
        if (fs::exists(path) && readWhole(path) != entry->content)
            throw PackError(path.string() + ": this file is there already; move it away first");
    }
}

// Puts the file's name in the place of the word, on the line where the manifest has it.
void nameFile(std::string& manifest, const ManifestEntry& entry) {
    std::size_t start = 0;
    for (int line = 1; line < entry.place.line; ++line)
        start = manifest.find('\n', start) + 1;
    const std::size_t place = manifest.find(entry.word, start);
    manifest.replace(place, entry.word.size(), entry.entry.name);
}

void eject(const Project& project, const Entries& entries, std::ostream& out) {
    checkPlaces(project, entries);
    std::string manifest = readWhole(project.manifestPath);
    for (const ManifestEntry* entry : entries) {
        const fs::path path = project.folder() / entry->entry.name;
        writeWhole(path, entry->content);
        nameFile(manifest, *entry);
        out << path.string() << ": was " << entry->word << '\n';
    }
    writeWhole(project.manifestPath, manifest);
}

int run(Arguments& arguments) {
    const System system = takeSystem(arguments).value_or(System::windows);
    std::vector<std::string> words = arguments.takeRest(0, 100, "");
    fs::path place = ".";
    if (!words.empty() && fs::exists(pathOf(words[0]))) {
        place = pathOf(words[0]);
        words.erase(words.begin());
    }
    const Project project = readSoundProject(place, system);
    const Entries entries = chosen(project, words);
    if (entries.empty())
        std::cout << project.manifestPath.string() << ": names nothing that ships with the tool\n";
    else
        eject(project, entries, std::cout);
    return success;
}

}  // namespace

const Command ejectCommand = {
    "eject", "[FOLDER|MANIFEST] [WORD ...] [--for windows|host]",
    "writes what ships with the tool into a project",
    "Writes the files that the manifest names by words such as <17+> beside the manifest, and\n"
    "names them there, so that they can be changed. All other bytes of the manifest stay.\n"
    "\n"
    "  WORD        which of them: 17+ (the brackets may be left out); all by default\n"
    "  --for       the system for which a JVM file is written: windows (the default) or host\n",
    run};

}  // namespace corvane::pack
