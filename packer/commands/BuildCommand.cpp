// `corvane-pack build`.
#include <fstream>
#include <sstream>

#include "launcherfile/PackedRecord.h"
#include "launcherfile/PayloadFormat.h"
#include "packer/base/Paths.h"
#include "packer/commands/Command.h"
#include "packer/project/Manifest.h"
#include "packer/project/VerifyJar.h"
#include "platform/Platform.h"

namespace corvane::pack {

namespace {

namespace fs = std::filesystem;

std::ifstream open(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream || fs::is_directory(path))
        throw PackError(path.string() + ": the file can't be opened");
    return stream;
}

// A launcher that is packed already would hide what is appended to it behind its own payload.
void checkBare(const fs::path& stub) {
    std::ifstream stream = open(stub);
    std::string end(4, '\0');
    stream.seekg(-4, std::ios::end);
    stream.read(end.data(), 4);
    if (stream && end == "\xCA\x82\xCA\x82")
        throw PackError(stub.string() + ": this launcher is packed already; name a bare one");
}

// Finds a file that is too large while its line is known and nothing is written yet.
void checkSizes(const Manifest& manifest, const fs::path& manifestPath, const fs::path& stub) {
    std::uintmax_t size = fs::file_size(stub);
    for (const auto& [entry, path, line] : manifest.entries) {
        size += path.empty() ? 0 : fs::file_size(path);
        if (size >= sizeLimit)
            throw PackError(manifestPath.string() + ":" + std::to_string(line) + ": " + tooLarge);
    }
}

void append(PayloadWriter& writer, const ManifestEntry& file) {
    if (file.path.empty()) {
        std::istringstream jar{std::string(verifyJar())};
        writer.appendFile(file.entry, jar);
    } else {
        std::ifstream content = open(file.path);
        writer.appendFile(file.entry, content);
    }
}

// Leaves the seal in the place that the program has for it; one that has none stays as it is.
void leaveRecord(std::ostream& out, const fs::path& stub, const Seal& seal) {
    std::ostringstream bytes;
    bytes << open(stub).rdbuf();
    const std::size_t marker = bytes.view().find({packedMarker.data(), packedMarker.size()});
    if (marker == std::string_view::npos)
        return;
    out.seekp(static_cast<std::streamoff>(marker + packedMarker.size()));
    for (const std::uint32_t value : {seal.length, seal.checksum}) {
        for (int shift = 24; shift >= 0; shift -= 8)
            out.put(static_cast<char>(value >> shift & 0xFF));
    }
    if (!out.flush())
        throw PackError("the file could not be written");
}

void write(const Manifest& manifest, const fs::path& stub, const fs::path& path) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out)
        throw PackError(path.string() + ": the file can't be created");
    PayloadWriter writer(out);
    std::ifstream program = open(stub);
    writer.appendProgram(program);
    for (const ManifestEntry& file : manifest.entries)
        append(writer, file);
    leaveRecord(out, stub, writer.finish(manifest.kind));
}

// Removes a file unless it was renamed in time.
class PartialFile {
  public:
    explicit PartialFile(fs::path path) : path_(std::move(path)) {}
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;
    ~PartialFile() {
        std::error_code ignored;
        fs::remove(path_, ignored);
    }

    const fs::path& path() const { return path_; }

  private:
    fs::path path_;
};

// The output appears only when it is whole, and is a program as the stub is.
void build(const fs::path& manifestPath, const fs::path& stub, const fs::path& output) {
    const Manifest manifest = readManifest(manifestPath);
    checkBare(stub);
    fs::path partialPath = output;
    partialPath += ".part";
    const PartialFile partial(partialPath);
    try {
        checkSizes(manifest, manifestPath, stub);
        write(manifest, stub, partial.path());
        fs::permissions(partial.path(), fs::status(stub).permissions());
        fs::rename(partial.path(), output);
    } catch (const fs::filesystem_error& failure) {
        throw PackError(failure.what());
    }
}

// The launcher beside this program, with the same extension.
fs::path launcherBeside() {
    char path[4096] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    const fs::path own = pathOf(nativePath(path));
    return (own.parent_path() / "launcher").replace_extension(own.extension());
}

int run(Arguments& arguments) {
    const std::optional<std::string> output = arguments.takeValue("-o");
    const std::optional<std::string> stub = arguments.takeValue("--stub");
    const std::vector<std::string> rest = arguments.takeRest(1, 1, "a manifest");
    if (!output)
        throw UsageError("it needs -o FILE");
    build(pathOf(rest[0]), stub ? pathOf(*stub) : launcherBeside(), pathOf(*output));
    return success;
}

}  // namespace

const Command buildCommand = {
    "build", "MANIFEST -o FILE [--stub LAUNCHER]",
    "makes a launcher of the files that MANIFEST names",
    "Appends the files that MANIFEST names to a copy of the bare launcher and writes the result "
    "to\n"
    "FILE. The bare launcher is LAUNCHER, by default the launcher beside corvane-pack.\n",
    run};

}  // namespace corvane::pack
