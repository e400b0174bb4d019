// `corvane-pack list`.
#include <iomanip>
#include <iostream>

#include "packer/base/Json.h"
#include "packer/base/Paths.h"
#include "packer/commands/Command.h"
#include "packer/payload/PackedLauncher.h"
#include "packer/project/Manifest.h"

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

void list(const PackedLauncher& launcher, std::ostream& out) {
    out << "kind " << launcher.kind() << ", " << launcher.files().count() << " files"
        << (launcher.isSigned() ? ", signed" : "") << '\n'
        << "position      id  type                        size  name\n";
    std::int32_t position = 0;
    for (const FileIndexEntry& entry : launcher.files())
        listEntry(position++, entry, out);
}

void listEntryAsJson(std::int32_t position, const FileIndexEntry& entry, std::ostream& out) {
    out << "\n    {\"position\": " << position << ", \"id\": " << entry.id
        << ", \"type\": " << json(typeName(entry.type)) << ", \"size\": " << entry.length
        << ", \"name\": " << json(entry.name.view());
    if (entry.hasDecompressedInfo)
        out << ", \"unpackedFiles\": " << entry.decompressedFileCount
            << ", \"unpackedBytes\": " << entry.decompressedSize;
    out << '}';
}

void listAsJson(const PackedLauncher& launcher, std::ostream& out) {
    out << "{\"kind\": " << launcher.kind() << ", \"size\": " << launcher.size()
        << ", \"signed\": " << (launcher.isSigned() ? "true" : "false") << ", \"files\": [";
    std::int32_t position = 0;
    for (const FileIndexEntry& entry : launcher.files()) {
        out << (position == 0 ? "" : ",");
        listEntryAsJson(position++, entry, out);
    }
    out << "]}\n";
}

int run(Arguments& arguments) {
    const bool asJson = arguments.takeFlag("--json");
    const PackedLauncher launcher(pathOf(arguments.takeRest(1, 1, "a launcher")[0]));
    (asJson ? listAsJson : list)(launcher, std::cout);
    return success;
}

}  // namespace

const Command listCommand = {
    "list", "FILE [--json]", "tells what a launcher holds",
    "Prints the kind of a packed launcher and the position, id, type, size and name of each file\n"
    "in it.\n"
    "\n"
    "  --json      as a JSON object\n",
    run};

}  // namespace corvane::pack
