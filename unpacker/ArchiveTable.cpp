// Reading and checking of an archive's table.
#include "unpacker/ArchiveTable.h"

#include "foundation/Exceptions.h"
#include "unpacker/ArchiveNames.h"

namespace corvane {

namespace {

[[noreturn]] void refuse(const String& why) {
    throw LauncherException("The Java runtime is damaged: " + why);
}

void check(const ArchiveEntry& entry) {
    if (entry.kind > EntryKind::link || (entry.filtered && !entry.isFile()))
        refuse("an entry of an unknown kind");
    if (!isArchiveName(entry.name.view()))
        refuse("no name for a file: " + entry.name);
    if (entry.kind == EntryKind::link && !isArchiveLink(entry.name.view(), entry.target.view()))
        refuse("a link that leads elsewhere: " + entry.name);
}

}  // namespace

ArchiveTable::ArchiveTable(std::unique_ptr<char[]> bytes, std::uint32_t size,
                           std::uint32_t contentSize)
    : bytes_(std::move(bytes)), size_(size) {
    std::uint64_t total = 0;
    bool ended = false;
    forEach([&](const ArchiveEntry& entry, bool last) {
        check(entry);
        total += entry.size;
        ended = last && entry.kind == EntryKind::file && !entry.filtered &&
                entry.size <= largestJvmFile && entry.name.compare(archiveJvmFile) == 0;
    });
    if (!ended)
        refuse("it doesn't end with the jvm file");
    if (total != contentSize)
        refuse("the files' sizes don't add up");
}

std::uint32_t ArchiveTable::number(std::uint32_t& position, std::uint32_t bytes) const {
    if (bytes > size_ - position)
        refuse("its table is cut");
    std::uint32_t value = 0;
    for (const std::uint32_t end = position + bytes; position < end; ++position)
        value = value << 8 | static_cast<unsigned char>(bytes_[position]);
    return value;
}

String ArchiveTable::text(std::uint32_t& position, std::uint32_t length) const {
    if (length > size_ - position)
        refuse("its table is cut");
    String result(bytes_.get() + position, length);
    position += length;
    return result;
}

void ArchiveTable::read(std::uint32_t& position, ArchiveEntry& entry) const {
    const std::uint32_t kind = number(position, 1);
    entry.filtered = (kind & filteredMark) != 0;
    entry.kind = static_cast<EntryKind>(kind & ~std::uint32_t{filteredMark});
    entry.size = 0;
    entry.target = "";
    entry.name = text(position, number(position, 2));
    if (entry.isFile())
        entry.size = number(position, 4);
    if (entry.kind == EntryKind::link)
        entry.target = text(position, number(position, 2));
}

}  // namespace corvane
