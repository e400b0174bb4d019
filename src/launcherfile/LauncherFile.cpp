// The index: reading, lookups, extraction of everything.
#include "launcherfile/LauncherFile.h"

#include "base/Log.h"
#include "base/RunContext.h"
#include "foundation/BigEndian.h"
#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"

namespace corvane {

namespace {

void logEntry(const FileIndexEntry& entry) {
    logMessage("file type: " + decimalText(static_cast<std::int32_t>(entry.type)) +
               "\n  file id: " + decimalText(entry.id) +
               "\n  length: " + decimalText(entry.length) +
               "\n  offset: " + decimalText(entry.offset) + "\n  file name: " + entry.name);
}

// The tag of an input file under which a tag-bearing file is named.
struct InputTag {
    FileType type;
    const char* name;
    bool repeated;
};

constexpr InputTag inputTags[] = {
    {FileType::jvmFile, "JVM", true},
    {FileType::launchScript, "LAUNCHSCRIPT", false},
    {FileType::instructions, "INSTRUCTIONS", false},
    {FileType::jvmMessage, "JVMMESSAGE", false},
};

void nameInInputFile(TagFile& input, const FileIndexEntry& entry) {
    for (const InputTag& tag : inputTags) {
        if (tag.type != entry.type)
            continue;
        if (tag.repeated)
            input.addValue(tag.name, entry.name);
        else
            input.setValue(tag.name, entry.name);
    }
}

}  // namespace

bool LauncherFile::readIndex(std::FILE* stream, std::int32_t trailerOffset) {
    if (std::fseek(stream, trailerOffset - trailerSizeBehindKind, SEEK_END) != 0)
        throw LauncherException("Invalid launcher format.");
    const std::uint32_t indexOffset = readUInt32BE(stream, "Unable to read file index offset.");
    if (readUInt32BE(stream, "Unable to read launcher identification value.") != identification)
        return false;
    const long fileSize = std::ftell(stream) - trailerOffset;
    // Positions are signed 32-bit numbers, so that a larger one is no position.
    if (std::fseek(stream, static_cast<std::int32_t>(indexOffset), SEEK_SET) != 0)
        throw LauncherException("Invalid file index offset.");
    const auto fileCount =
        static_cast<std::int32_t>(readUInt32BE(stream, "Unable to read the file count."));
    if (fileCount < 0)
        throw LauncherException("Invalid file count in file index.");
    for (std::int32_t i = 0; i < fileCount; ++i) {
        auto entry = std::make_unique<FileIndexEntry>();
        entry->read(stream);
        if (entry->offset > fileSize)
            throw LauncherException("Invalid offset to file bytes in file index.");
        add(std::move(entry));
    }
    // The texts of many entries cost more than their reading.
    if (!runContext().logFile.empty()) {
        for (const FileIndexEntry& entry : *this)
            logEntry(entry);
    }
    return true;
}

void LauncherFile::extractAll() const {
    TagFile input;
    input.setValue("ACTION", "RUN_INSTRUCTIONS");
    for (const FileIndexEntry& entry : *this) {
        nameInInputFile(input, entry);
        entry.extract("");
    }
    input.write("input.tag");
}

const FileIndexEntry* LauncherFile::findById(std::int32_t id) const noexcept {
    for (const FileIndexEntry& entry : *this) {
        if (entry.id == id)
            return &entry;
    }
    return nullptr;
}

const FileIndexEntry* LauncherFile::findByType(FileType type) const noexcept {
    for (const FileIndexEntry& entry : *this) {
        if (entry.type == type)
            return &entry;
    }
    return nullptr;
}

}  // namespace corvane
