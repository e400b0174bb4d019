// Finding and checking of the bare launcher.
#include "packer/payload/Stub.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>

#include "launcherfile/PackedRecord.h"
#include "launcherfile/RuntimeTrailer.h"
#include "packer/base/Errors.h"
#include "packer/base/Paths.h"
#include "packer/base/WholeFile.h"
#include "platform/Platform.h"

namespace corvane::pack {

namespace fs = std::filesystem;

namespace {

struct SystemRow {
    System system;
    const char* name;
    const char* launcher;
    const char* unpacker;
    std::string_view beginning;  // of its programs
};

constexpr SystemRow systems[] = {
    {System::windows, "Windows", "launcher.exe", "unpack-java.exe", "MZ"},
    {System::host, "Linux", "launcher", "unpack-java",
     "\x7F"
     "ELF"},
};

const SystemRow& rowOf(System system) {
    return *std::ranges::find(systems, system, &SystemRow::system);
}

constexpr std::string_view trailerEnd = "\xCA\x82\xCA\x82";
constexpr std::size_t recordSize = sizeof PackedRecord::length + sizeof PackedRecord::checksum;

// Reads no more of a file that is no program than its beginning.
System systemOf(std::istream& stream, const fs::path& path) {
    std::string beginning(4, '\0');
    stream.read(beginning.data(), 4);
    const auto* const row = std::ranges::find_if(
        systems, [&](const SystemRow& each) { return beginning.starts_with(each.beginning); });
    if (row == std::end(systems))
        throw PackError(path.string() + ": this is no program; name a bare launcher");
    return row->system;
}

std::size_t findRecord(const Stub& stub) {
    const std::string_view marker(packedMarker.data(), packedMarker.size());
    const std::size_t found = stub.bytes.find(marker);
    if (found == std::string::npos || found + marker.size() + recordSize > stub.bytes.size())
        throw PackError(stub.path.string() +
                        ": this program is no launcher of this kind; name a bare launcher");
    return found + marker.size();
}

bool isPacked(const Stub& stub) {
    return stub.bytes.ends_with(trailerEnd) ||
           stub.bytes.compare(stub.recordPosition, recordSize, std::string(recordSize, '\0')) != 0;
}

fs::path ownPath() {
    char path[4096] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    return pathOf(nativePath(path));
}

std::array<fs::path, 2> placesOf(const char* name) {
    const fs::path folder = ownPath().parent_path();
    return {folder / name, folder.parent_path() / "lib" / "corvane" / name};
}

bool isThere(const fs::path& place) {
    std::error_code ignored;
    return fs::exists(place, ignored);
}

// What to do without a launcher for a system.
std::string wayOut(System missing) {
    std::string way = "; name it with --stub";
    const bool hasHost = std::ranges::any_of(placesOf(rowOf(System::host).launcher), isThere);
    return missing == System::windows && hasHost
               ? way + ", or make a launcher for Linux with --for host"
               : way;
}

// Raises `PackError` with the words for the program and the way out.
fs::path findBeside(const char* name, const std::string& what, System system,
                    const std::string& way) {
    const auto places = placesOf(name);
    const auto found = std::ranges::find_if(places, isThere);
    if (found == places.end())
        throw PackError("there is no " + what + " for " + systemName(system) + ", neither " +
                        places[0].string() + " nor " + places[1].string() + way);
    return *found;
}

}  // namespace

const char* systemName(System system) {
    return rowOf(system).name;
}

System ownSystem() {
    std::ifstream stream(ownPath(), std::ios::binary);
    return systemOf(stream, ownPath());
}

Stub readStub(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream || fs::is_directory(path))
        throw PackError(path.string() + ": the file can't be opened");
    Stub stub{path, systemOf(stream, path), {}, 0};
    setProgram(stub, readWhole(path));
    if (isPacked(stub))
        throw PackError(path.string() + ": this launcher is packed already; name a bare one");
    return stub;
}

void setProgram(Stub& stub, std::string bytes) {
    stub.bytes = std::move(bytes);
    stub.recordPosition = findRecord(stub);
}

fs::path findStub(System system) {
    return findBeside(rowOf(system).launcher, "bare launcher", system, wayOut(system));
}

fs::path findUnpacker(System system) {
    return findBeside(rowOf(system).unpacker, "self-extractor", system,
                      "; corvane-pack jvm takes another with --unpacker");
}

std::string readUnpacker(const fs::path& path, System system) {
    const std::string bytes = readWhole(path);
    const std::string_view mark(reinterpret_cast<const char*>(runtimeMark.data()),
                                runtimeMark.size());
    if (!bytes.starts_with(rowOf(system).beginning))
        throw PackError(path.string() + ": this is no program for " + systemName(system) +
                        "; name a bare self-extractor");
    if (bytes.ends_with(mark))
        throw PackError(path.string() +
                        ": a runtime is packed behind this program already; name a "
                        "bare self-extractor");
    return bytes;
}

}  // namespace corvane::pack
