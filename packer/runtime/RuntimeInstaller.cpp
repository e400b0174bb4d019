// Packing of a runtime image.
#include "packer/runtime/RuntimeInstaller.h"

#include <zlib.h>

#include <fstream>
#include <vector>

#include "launcherfile/RuntimeTrailer.h"
#include "packer/base/Errors.h"
#include "packer/base/Progress.h"
#include "packer/payload/Stub.h"
#include "packer/runtime/Sha256.h"
#include "unpacker/CallFilter.h"

namespace corvane::pack {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t blockSize = filterBlock;
constexpr int bestLevel = 9;
constexpr int usualMemory = 8;  // packs a runtime tighter than the most
constexpr int gzipWindow = 15 + 16;
constexpr int unknownSystem = 255;

std::string bigEndian(std::uint64_t value, int bytes) {
    std::string text;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        text += static_cast<char>(value >> shift & 0xFF);
    return text;
}

// One gzip stream over all that it is given.
class PackingStream {
  public:
    // Appends to `out` and tells `progress` of what went in.
    PackingStream(std::string& out, Progress& progress)
        : out_(out), start_(out.size()), progress_(progress), block_(blockSize) {
        if (deflateInit2(&zlib_, bestLevel, Z_DEFLATED, gzipWindow, usualMemory,
                         Z_DEFAULT_STRATEGY) != Z_OK)
            throw PackError("not enough memory");
        // The same bytes on every system.
        header_.os = unknownSystem;
        deflateSetHeader(&zlib_, &header_);
    }
    PackingStream(const PackingStream&) = delete;
    PackingStream& operator=(const PackingStream&) = delete;
    ~PackingStream() { deflateEnd(&zlib_); }

    void add(const std::string& bytes) { pack(bytes.data(), bytes.size(), Z_NO_FLUSH); }
    void add(const char* bytes, std::size_t size) { pack(bytes, size, Z_NO_FLUSH); }
    void finish() { pack("", 0, Z_FINISH); }

    std::size_t size() const { return out_.size() - start_; }
    std::string digest() const {
        Sha256 sum;
        sum.add(out_.data() + start_, size());
        const auto digest = sum.finish();
        return {digest.begin(), digest.begin() + runtimeDigestBytes};
    }

  private:
    void pack(const char* bytes, std::size_t size, int flush) {
        std::vector<Bytef> input(bytes, bytes + size);
        zlib_.next_in = input.data();
        zlib_.avail_in = static_cast<uInt>(size);
        do {
            zlib_.next_out = block_.data();
            zlib_.avail_out = static_cast<uInt>(block_.size());
            deflate(&zlib_, flush);
            out_.append(reinterpret_cast<const char*>(block_.data()),
                        block_.size() - zlib_.avail_out);
        } while (zlib_.avail_out == 0);
        progress_.reach(zlib_.total_in);
    }

    std::string& out_;
    std::size_t start_;
    Progress& progress_;
    std::vector<Bytef> block_;
    z_stream zlib_{};
    gz_header header_{};
};

std::string tableOf(const RuntimeImage& image) {
    const auto counted = [](const std::string& text) { return bigEndian(text.size(), 2) + text; };
    std::string table;
    for (const ImageEntry& entry : image.entries) {
        table += static_cast<char>(static_cast<std::uint8_t>(entry.kind) |
                                   (entry.machineCode ? filteredMark : 0));
        table += counted(entry.name);
        if (entry.kind == EntryKind::link)
            table += counted(entry.text);
        else if (entry.kind != EntryKind::directory)
            table += bigEndian(entry.size, 4);
    }
    return table;
}

void packFile(const ImageEntry& entry, PackingStream& packed) {
    std::ifstream file(entry.source, std::ios::binary);
    std::vector<char> block(blockSize);
    std::uint32_t position = 0;
    while (file.read(block.data(), blockSize) || file.gcount() > 0) {
        const auto size = static_cast<std::size_t>(file.gcount());
        if (entry.machineCode)
            filterCalls(reinterpret_cast<unsigned char*>(block.data()), size, position);
        packed.add(block.data(), size);
        position += static_cast<std::uint32_t>(size);
    }
    if (position != entry.size)
        throw PackError(entry.source.string() + ": the file can't be read, or it has changed");
}

}  // namespace

bool isKeepPlace(const std::string& place) {
    const bool absolute = place.starts_with('%') || place.starts_with('/') ||
                          place.starts_with('\\') || place.find(":\\") == 1;
    return absolute && place.size() <= longestRuntimePlace &&
           place.find_first_of("*?\"<>|;\n") == std::string::npos;
}

std::string makeRuntimeInstaller(const RuntimeImage& image, const fs::path& unpacker,
                                 const std::string& place) {
    std::string bytes = readUnpacker(unpacker, image.system);
    Progress progress("the Java runtime", image.size);
    PackingStream packed(bytes, progress);
    const std::string table = tableOf(image);
    packed.add(table);
    for (const ImageEntry& entry : image.entries) {
        if (!entry.source.empty())
            packFile(entry, packed);
        else if (entry.kind != EntryKind::link)
            packed.add(entry.text);
    }
    packed.finish();
    const std::size_t size = packed.size();
    const std::string digest = packed.digest();
    return bytes.append(place)
        .append(bigEndian(size, 4))
        .append(bigEndian(table.size(), 4))
        .append(bigEndian(image.size, 4))
        .append(bigEndian(place.size(), 4))
        .append(digest)
        .append(reinterpret_cast<const char*>(runtimeMark.data()), runtimeMark.size());
}

}  // namespace corvane::pack
