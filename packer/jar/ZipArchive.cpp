// Reading of zip archives.
#include "packer/jar/ZipArchive.h"

#include <zlib.h>

#include <algorithm>

#include "packer/base/Errors.h"

namespace corvane::pack {

namespace {

using namespace std::string_view_literals;

// The records of an archive: how each begins, and how long it is without its names.
constexpr std::string_view entrySignature = "PK\1\2"sv;
constexpr std::size_t entrySize = 46;
constexpr std::string_view localSignature = "PK\3\4"sv;
constexpr std::size_t localSize = 30;
constexpr std::string_view endSignature = "PK\5\6"sv;
constexpr std::size_t endSize = 22;
constexpr std::size_t longestComment = 0xFFFF;
// Those of archives with more entries than two bytes count.
constexpr std::string_view largeEndSignature = "PK\6\6"sv;
constexpr std::size_t largeEndSize = 56;
constexpr std::string_view locatorSignature = "PK\6\7"sv;
constexpr std::size_t locatorSize = 20;

constexpr std::uint32_t stored = 0;
constexpr std::uint32_t deflated = 8;
constexpr std::uint32_t tooLarge = 0xFFFF'FFFF;
// What deflate makes of a byte at most, and what it needs for nothing at all.
constexpr std::uint64_t deflateRatio = 1032;
constexpr std::uint64_t deflateRest = 1024;

// A little-endian number inside of a record that is there.
std::uint64_t number(std::string_view record, std::size_t at, std::size_t size) {
    std::uint64_t value = 0;
    for (std::size_t i = size; i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(record[at + i]);
    return value;
}

std::uint32_t number32(std::string_view record, std::size_t at) {
    return static_cast<std::uint32_t>(number(record, at, 4));
}

}  // namespace

ZipArchive::ZipArchive(std::string name, std::string_view bytes)
    : name_(std::move(name)), bytes_(bytes) {
    readDirectory(findDirectory());
}

const ZipEntry* ZipArchive::find(std::string_view name) const {
    const auto found = std::find_if(entries_.rbegin(), entries_.rend(),
                                    [name](const ZipEntry& entry) { return entry.name == name; });
    return found == entries_.rend() ? nullptr : &*found;
}

std::string ZipArchive::read(const ZipEntry& entry) const {
    if (entry.encrypted)
        fail(entry, "it is encrypted");
    const std::string_view packed = packedBytes(entry);
    std::string content;
    if (entry.method == deflated)
        content = inflate(entry, packed);
    else if (entry.method == stored && entry.size == entry.packedSize)
        content = packed;
    else if (entry.method == stored)
        fail(entry, "it has two sizes");
    else
        fail(entry, "its packing method " + std::to_string(entry.method) +
                        " is none that Java reads; make the jar with the JDK's own jar tool");
    const uLong checksum =
        crc32_z(0, reinterpret_cast<const Bytef*>(content.data()), content.size());
    if (checksum != entry.checksum)
        fail(entry, "its checksum differs from what it holds");
    return content;
}

void ZipArchive::fail(const std::string& what) const {
    throw PackError(name_ + ": the jar is damaged: " + what);
}

void ZipArchive::fail(const ZipEntry& entry, const std::string& what) const {
    fail(entry.name + ", at byte " + std::to_string(entry.position) + ": " + what);
}

std::string_view ZipArchive::part(std::uint64_t at, std::uint64_t size, const char* what) const {
    if (at > bytes_.size() || size > bytes_.size() - at)
        fail(std::string(what) + " should stand at byte " + std::to_string(at) +
             ", and the file has " + std::to_string(bytes_.size()) + " bytes");
    return bytes_.substr(static_cast<std::size_t>(at), static_cast<std::size_t>(size));
}

// The end record is the last thing in the file but for a comment, whose length it tells.
ZipArchive::Directory ZipArchive::findDirectory() const {
    const std::size_t reach = std::min(bytes_.size(), endSize + longestComment);
    for (std::size_t back = endSize; back <= reach; ++back) {
        const std::size_t at = bytes_.size() - back;
        const std::string_view record = bytes_.substr(at);
        if (record.starts_with(endSignature) && number(record, 20, 2) <= back - endSize)
            return findLargeDirectory(
                {number(record, 10, 2), number(record, 12, 4), number(record, 16, 4), at});
    }
    if (bytes_.starts_with(localSignature))
        fail("its end is missing; it was probably cut off on its way");
    throw PackError(name_ + ": this is no jar: it has no directory of a zip archive");
}

// Many entries are told of in a larger record, to which another one leads.
ZipArchive::Directory ZipArchive::findLargeDirectory(const Directory& small) const {
    if (small.end < locatorSize)
        return small;
    const std::string_view locator = bytes_.substr(small.end - locatorSize, locatorSize);
    if (!locator.starts_with(locatorSignature))
        return small;
    const std::uint64_t at = number(locator, 8, 8);
    const std::string_view record = part(at, largeEndSize, "the large directory's end");
    if (!record.starts_with(largeEndSignature))
        fail("no end of a large directory stands at byte " + std::to_string(at));
    return {number(record, 32, 8), number(record, 40, 8), number(record, 48, 8),
            static_cast<std::size_t>(at)};
}

// Positions count from the archive's first byte, in front of which a program may stand: the
// directory ends where its end record begins.
void ZipArchive::readDirectory(const Directory& directory) {
    if (directory.size > directory.end || directory.position > directory.end - directory.size)
        fail("its directory, " + std::to_string(directory.size) + " bytes at byte " +
             std::to_string(directory.position) + ", does not fit");
    std::size_t at = directory.end - static_cast<std::size_t>(directory.size);
    const std::size_t shift = at - static_cast<std::size_t>(directory.position);
    std::uint64_t packed = 0;
    for (std::uint64_t i = 0; i < directory.entryCount; ++i) {
        at = readEntry(at, shift);
        packed += entries_.back().packedSize;
        if (packed > bytes_.size())
            fail("its entries are larger than the file");
    }
}

// Gives the position behind the entry.
std::size_t ZipArchive::readEntry(std::size_t at, std::size_t shift) {
    const std::string_view record = part(at, entrySize, "an entry of the directory");
    if (!record.starts_with(entrySignature))
        fail("no entry of the directory stands at byte " + std::to_string(at));
    ZipEntry entry;
    entry.encrypted = (number(record, 8, 2) & 1) != 0;
    entry.method = static_cast<std::uint32_t>(number(record, 10, 2));
    entry.checksum = number32(record, 16);
    entry.packedSize = number32(record, 20);
    entry.size = number32(record, 24);
    const std::uint64_t nameSize = number(record, 28, 2);
    const std::uint64_t rest = number(record, 30, 2) + number(record, 32, 2);
    entry.name = part(at + entrySize, nameSize, "a name");
    if (entry.packedSize == tooLarge || entry.size == tooLarge || number(record, 42, 4) == tooLarge)
        throw PackError(name_ + ": " + entry.name +
                        " is kept as an entry of more than 4 GB, which no launcher can hold");
    entry.position = static_cast<std::size_t>(number(record, 42, 4)) + shift;
    entries_.push_back(std::move(entry));
    return at + entrySize + static_cast<std::size_t>(nameSize + rest);
}

std::string_view ZipArchive::packedBytes(const ZipEntry& entry) const {
    const std::string_view record = part(entry.position, localSize, entry.name.c_str());
    if (!record.starts_with(localSignature))
        fail(entry, "no entry begins there");
    const std::uint64_t start =
        entry.position + localSize + number(record, 26, 2) + number(record, 28, 2);
    return part(start, entry.packedSize, entry.name.c_str());
}

std::string ZipArchive::inflate(const ZipEntry& entry, std::string_view packed) const {
    if (entry.size > packed.size() * deflateRatio + deflateRest)
        fail(entry, "it can't be as large as its directory says");
    std::string content(entry.size, '\0');
    z_stream stream = {};
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK)
        throw PackError(name_ + ": there is too little memory to read it");
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(content.data());
    stream.avail_out = static_cast<uInt>(content.size());
    const int result = ::inflate(&stream, Z_FINISH);
    const std::string reason = stream.msg == nullptr ? "" : std::string(" (") + stream.msg + ")";
    inflateEnd(&stream);
    if (result != Z_STREAM_END || stream.avail_out != 0)
        fail(entry, "what it holds can't be unpacked" + reason);
    return content;
}

}  // namespace corvane::pack
