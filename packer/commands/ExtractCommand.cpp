// `corvane-pack extract` and `corvane-pack cat`.
#include <charconv>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <memory>

#include "packer/base/Errors.h"
#include "packer/base/FileNames.h"
#include "packer/base/Findings.h"
#include "packer/base/Json.h"
#include "packer/base/Paths.h"
#include "packer/base/Progress.h"
#include "packer/base/WholeFile.h"
#include "packer/commands/Command.h"
#include "packer/payload/PackedLauncher.h"
#include "platform/Platform.h"

namespace corvane::pack {

namespace {

namespace fs = std::filesystem;

using PartialFiles = std::vector<std::unique_ptr<PartialFile>>;

// Whoever packed the launcher chose the names: none may lead out of the folder, or to another's
// file.
void checkNames(const PackedLauncher& launcher, const fs::path& folder, bool force) {
    std::map<std::string, std::string> taken;
    for (const FileIndexEntry& entry : launcher.files()) {
        const std::string name = nameOf(entry);
        const std::string fault = fileNameFault(name);
        if (!fault.empty())
            throw PackError("the name " + json(name) + " is refused: " + fault +
                            "; corvane-pack cat writes that file");
        const auto [other, isNew] = taken.emplace(foldedName(name), name);
        if (!isNew)
            throw PackError("the names " + other->second + " and " + name +
                            " are one on Windows; corvane-pack cat writes such a file");
        if (!force && fs::exists(folder / pathOf(name)))
            throw PackError((folder / pathOf(name)).string() +
                            ": this file is there already; --force replaces it");
    }
}

std::uint64_t sizeOf(const PackedLauncher& launcher) {
    std::uint64_t size = 0;
    for (const FileIndexEntry& entry : launcher.files())
        size += static_cast<std::uint64_t>(entry.length);
    return size;
}

void write(const PackedLauncher& launcher, const FileIndexEntry& entry, const fs::path& path,
           const std::function<void(std::uint64_t size)>& onProgress) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out)
        throw PackError(path.string() + ": the file can't be created");
    launcher.copy(entry, out, onProgress);
    out.close();
    if (!out)
        throw PackError(path.string() + ": the file can't be written");
    if (entry.type == FileType::jvmInstaller || entry.type == FileType::embeddedLauncher)
        fs::permissions(path, fs::perms::owner_exec, fs::perm_options::add);
}

// All files get their names when all are whole.
void extract(const PackedLauncher& launcher, const fs::path& folder) {
    Progress progress("extracting", sizeOf(launcher));
    PartialFiles files;
    std::uint64_t done = 0;
    for (const FileIndexEntry& entry : launcher.files()) {
        files.push_back(std::make_unique<PartialFile>(folder / pathOf(nameOf(entry))));
        write(launcher, entry, files.back()->path(),
              [&](std::uint64_t size) { progress.reach(done + size); });
        done += static_cast<std::uint64_t>(entry.length);
    }
    for (const std::unique_ptr<PartialFile>& file : files)
        file->keep();
}

int runExtract(Arguments& arguments) {
    const bool force = arguments.takeFlag("--force");
    const fs::path folder = pathOf(arguments.takeValue("-o").value_or("."));
    const PackedLauncher launcher(pathOf(arguments.takeRest(1, 1, "a launcher")[0]));
    checkNames(launcher, folder, force);
    std::error_code failure;
    fs::create_directories(folder, failure);
    if (failure)
        throw PackError(folder.string() + ": the folder can't be made: " + failure.message());
    extract(launcher, folder);
    for (const FileIndexEntry& entry : launcher.files())
        std::cout << (folder / pathOf(nameOf(entry))).string() << '\n';
    return success;
}

// The file of that name, else the one at that position.
const FileIndexEntry& find(const PackedLauncher& launcher, const std::string& name) {
    std::vector<std::string> names;
    for (const FileIndexEntry& entry : launcher.files()) {
        if (nameOf(entry) == name)
            return entry;
        names.push_back(nameOf(entry));
    }
    std::int32_t position = -1;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), position);
    const bool isNumber = error == std::errc() && end == name.data() + name.size();
    if (isNumber && position >= 0 && position < launcher.files().count())
        return *launcher.files().at(position);
    const std::string meant = didYouMean(name, names);
    throw PackError("no file is called " + name + " in this launcher" +
                    (meant.empty() ? "" : "; " + meant));
}

int runCat(Arguments& arguments) {
    const std::vector<std::string> rest = arguments.takeRest(2, 2, "a launcher and a name");
    const PackedLauncher launcher(pathOf(rest[0]));
    const FileIndexEntry& entry = find(launcher, rest[1]);
    setBinaryOutput();
    launcher.copy(entry, std::cout);
    if (!std::cout.flush())
        throw PackError("standard output can't be written");
    return success;
}

}  // namespace

const Command extractCommand = {
    "extract", "FILE [-o FOLDER] [--force]", "writes the files that a launcher holds",
    "Writes all files that a packed launcher holds, and their paths on standard output. A failure\n"
    "leaves none of them.\n"
    "\n"
    "  -o FOLDER   where to; it is made if need be. The current folder by default\n"
    "  --force     replaces files that are there already\n",
    runExtract};

const Command catCommand = {
    "cat", "FILE NAME", "writes one file of a launcher to standard output",
    "Writes the bytes of one file that a packed launcher holds to standard output.\n"
    "\n"
    "  NAME        as corvane-pack list tells it, or its position there\n",
    runCat};

}  // namespace corvane::pack
