// `corvane-pack list`.
#include <cstdio>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <memory>

#include "base/RunContext.h"
#include "foundation/Exceptions.h"
#include "launcherfile/LauncherFile.h"
#include "launcherfile/LauncherKind.h"
#include "packer/base/Paths.h"
#include "packer/commands/Command.h"
#include "packer/project/Manifest.h"
#include "platform/Platform.h"

namespace corvane::pack {

namespace {

void listEntry(std::int32_t position, const FileIndexEntry& entry, std::ostream& out) {
    out << std::setw(8) << position << std::setw(8) << entry.id << "  " << std::left
        << std::setw(20) << typeName(entry.type) << std::right << std::setw(12) << entry.length
        << "  " << entry.name.view();
    if (entry.hasDecompressedInfo)
        out << "  (" << entry.decompressedFileCount << " files, " << entry.decompressedSize
            << " bytes unpacked)";
    out << '\n';
}

void list(const std::filesystem::path& launcher, std::ostream& out) {
    const std::string path = std::filesystem::absolute(launcher).string();
    try {
        const StreamGuard stream(openStream(path.c_str(), "rb"));
        if (!stream)
            throw PackError(path + ": the file can't be opened");
        const std::int32_t kind = launcherKind(path.c_str());
        LauncherFile files;
        if (!files.readIndex(stream.get(), runContext().trailerOffset))
            throw PackError(path + ": no payload is appended to this file");
        out << "kind " << kind << ", " << files.count() << " files\n"
            << "position      id  type                        size  name\n";
        std::int32_t position = 0;
        for (const FileIndexEntry& entry : files)
            listEntry(position++, entry, out);
    } catch (const LauncherException& failure) {
        throw PackError(path + ": " + failure.message.cstr());
    }
}

int run(Arguments& arguments) {
    list(pathOf(arguments.takeRest(1, 1, "a file")[0]), std::cout);
    return success;
}

}  // namespace

const Command listCommand = {"list", "FILE", "tells what a launcher holds",
                             "Prints the kind of a packed launcher and the position, id, type, "
                             "size and name of each file in\n"
                             "it.\n",
                             run};

}  // namespace corvane::pack
