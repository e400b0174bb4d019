// Reading of a packed launcher.
#include "packer/payload/PackedLauncher.h"

#include <algorithm>
#include <fstream>
#include <ostream>
#include <string_view>

#include "base/RunContext.h"
#include "foundation/Exceptions.h"
#include "launcherfile/LauncherKind.h"
#include "launcherfile/PackedRecord.h"
#include "launcherfile/SignedProgram.h"
#include "packer/base/Errors.h"
#include "platform/Platform.h"

namespace corvane::pack {

namespace fs = std::filesystem;

namespace {

constexpr const char* damaged = "this launcher is damaged or incomplete; download or copy it again";

// More than any program of ours has, and little enough to look through.
constexpr std::size_t mostOfProgram = 64'000'000;

std::uint32_t numberAt(const std::string& bytes, std::size_t position) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes[position + i]);
    return value;
}

// Whether the file lacks something of what the pack tool left in its program. One in which nothing
// was left lacks nothing.
bool lacksSomething(std::FILE* file, std::uint64_t size) {
    std::string bytes(std::min(mostOfProgram, static_cast<std::size_t>(size)), '\0');
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    const std::string_view marker(packedMarker.data(), packedMarker.size());
    const std::size_t record = bytes.find(marker) + marker.size();
    if (record < marker.size() || record + 8 > bytes.size())
        return false;
    const std::uint32_t length = numberAt(bytes, record);
    return length != 0 && !isWhole(file, length, numberAt(bytes, record + 4));
}

}  // namespace

std::string nameOf(const FileIndexEntry& entry) {
    return std::string(entry.name.view());
}

PackedLauncher::PackedLauncher(const fs::path& path) : path_(path) {
    if (fs::is_directory(path))
        fail("the file can't be opened");
    try {
        read();
    } catch (const LauncherException& failure) {
        fail(std::string(damaged) + " (" + failure.message.cstr() + ")");
    }
    checkEntries();
}

void PackedLauncher::read() {
    const std::string path = fs::absolute(path_).string();
    const StreamGuard stream(openStream(path.c_str(), "rb"));
    if (!stream)
        fail("the file can't be opened");
    size_ = fs::file_size(path_);
    if (lacksSomething(stream.get(), size_))
        fail(damaged);
    if (size_ <= static_cast<std::uint64_t>(trailerSize))
        fail("no payload is appended to this file");
    kind_ = launcherKind(path.c_str());
    if (!files_.readIndex(stream.get(), runContext().trailerOffset))
        fail("no payload is appended to this file");
    signed_ = signedPayloadEnd(stream.get()) < 0;
}

// The launcher takes what there is of a file that ends too early; here that would be a half one.
void PackedLauncher::checkEntries() const {
    for (const FileIndexEntry& entry : files_) {
        const auto end =
            static_cast<std::uint64_t>(entry.offset) + static_cast<std::uint64_t>(entry.length);
        if (end > size_)
            fail(std::string(damaged) + " (the file ends within " + nameOf(entry) + ")");
    }
}

void PackedLauncher::copy(const FileIndexEntry& entry, std::ostream& out,
                          const std::function<void(std::uint64_t size)>& onProgress) const {
    std::ifstream in(path_, std::ios::binary);
    in.seekg(entry.offset);
    std::string block(65536, '\0');
    const auto length = static_cast<std::size_t>(entry.length);
    for (std::size_t done = 0; done < length;) {
        const auto wanted = static_cast<std::streamsize>(std::min(block.size(), length - done));
        if (!in.read(block.data(), wanted))
            fail("the file can't be read");
        if (!out.write(block.data(), wanted))
            throw PackError(nameOf(entry) + ": the file can't be written");
        done += static_cast<std::size_t>(wanted);
        if (onProgress)
            onProgress(done);
    }
}

void PackedLauncher::fail(const std::string& message) const {
    throw PackError(path_.string() + ": " + message);
}

}  // namespace corvane::pack
