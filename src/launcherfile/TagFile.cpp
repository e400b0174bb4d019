// The tag file: lookups, reader, writer.
#include "launcherfile/TagFile.h"

#include <utility>

#include "base/FileErrors.h"
#include "base/Log.h"
#include "foundation/ArgumentText.h"
#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

constexpr const char* blockEnd = "/:";

const StringList noValues;

// The value on a tag line. The line is trimmed, so something stands behind a colon that isn't last.
String valueBehind(const String& line, std::size_t colon) {
    std::size_t start = line.findFirstNotOf(whitespaceChars, colon + 1);
    if (line.at(start) != '"')
        return line.substr(start);
    ++start;
    return readArgument(line, start, true);
}

bool isSafeBare(const String& value) {
    return !value.empty() && !isWhite(value.at(0)) && !isWhite(value.at(value.length() - 1)) &&
           value.find('"') == String::npos;
}

void writeRecord(std::FILE* file, const TagRecord& record) {
    const StringList& values = record.values;
    if (values.count() == 0)
        return;
    const bool block = values.count() > 1;
    std::fputs((record.name + (block ? ":\n" : ":")).cstr(), file);
    for (const String& value : values)
        writeLine(file, "  " + (isSafeBare(value) ? value
                                                  : "\"" + replaceAll(value, "\"", "\"\"") + "\""));
    if (block)
        writeLine(file, blockEnd);
}

}  // namespace

TagFile::TagFile(const String& path) {
    const StreamGuard stream(openStream(path.cstr(), "r"));
    if (!stream)
        throw LauncherException("Unable to load input file: " + path);
    read(stream.get(), path, 0, -1);
}

void TagFile::read(std::FILE* stream, const String& name, std::int32_t offset,
                   std::int32_t length) {
    fileName_ = name;
    lineCount_ = 0;
    if (std::fseek(stream, offset, SEEK_SET) != 0)
        throw LauncherException("Unable to read tag file.");
    const std::int64_t end = std::int64_t{offset} + length;
    while (!atEnd(stream) && (length < 0 || std::ftell(stream) < end)) {
        const String line = nextLine(stream);
        if (!line.empty())
            readTag(stream, line);
    }
    checkRead(stream, name);
}

void TagFile::readTag(std::FILE* stream, const String& line) {
    const std::size_t colon = line.find(':');
    if (colon == String::npos)
        syntaxError("Missing colon at the end of the tag name.", lineCount_);
    String name = line.substr(0, colon);
    trim(name);
    onTag(name);
    remove(name);
    if (colon + 1 == line.length()) {
        readBlock(stream, name);
    } else {
        setOnly(name, valueBehind(line, colon));
        onValue();
    }
}

void TagFile::readBlock(std::FILE* stream, const String& name) {
    const std::int32_t tagLine = lineCount_;
    for (;;) {
        if (atEnd(stream)) {
            checkRead(stream, fileName_);
            syntaxError("Missing /: tag completer.", tagLine);
        }
        String value = nextLine(stream);
        if (!value.empty() && value.at(0) == '"') {
            std::size_t pos = 1;
            value = readArgument(value, pos, true);
        }
        if (value == blockEnd)
            return;
        if (!value.empty()) {
            findOrAdd(name).values.add(value);
            onValue();
        }
    }
}

String TagFile::nextLine(std::FILE* stream) {
    String line;
    readLine(stream, line);
    ++lineCount_;
    return line;
}

void TagFile::syntaxError(const char* message, std::int32_t line) const {
    const String text =
        "Syntax error in " + fileName_ + " at line " + decimalText(line) + " ==> " + message;
    logMessage(text, LogLevel::error);
    throw LauncherException(text);
}

void TagFile::write(const String& path) const {
    StreamGuard file(openStream(path.cstr(), "w"));
    if (!file)
        throwWriteFailure(path, lastStreamError());
    for (const TagRecord& record : records_)
        writeRecord(file.get(), record);
    closeWritten(std::move(file), path);
}

String TagFile::value(const char* name, std::uint32_t index) const {
    return values(name).at(static_cast<std::int32_t>(index));
}

std::int32_t TagFile::valueCount(const char* name) const {
    return values(name).count();
}

const StringList& TagFile::values(const char* name) const {
    const TagRecord* const found = find(name);
    return found == nullptr ? noValues : found->values;
}

bool TagFile::boolValue(const char* name, bool defaultValue) const {
    std::int16_t number = 0;
    return scanNumber(value(name, 0), number) ? number != 0 : defaultValue;
}

void TagFile::setValue(const char* name, const String& value) {
    setOnly(name, value);
}

void TagFile::addValue(const char* name, const String& value) {
    findOrAdd(name).values.add(value);
}

void TagFile::setJvmTags(const String& jvmHome, const String& jvmFile, bool temporary) {
    setValue("JVM_HOME", jvmHome);
    setValue("JVM_FILE", jvmFile);
    setValue("JVM_TEMP", temporary ? "1" : "0");
}

// The link that leads to the record of that name, or the null one where its bucket ends. Null while
// there are no buckets.
TagRecord** TagFile::linkTo(std::string_view name) const noexcept {
    if (buckets_.count == 0)
        return nullptr;
    const std::uint32_t hash = hashOf(name);
    TagRecord** link = &buckets_.first[hash % buckets_.count];
    while (*link != nullptr && ((*link)->hash != hash || (*link)->name.view() != name))
        link = &(*link)->next;
    return link;
}

void TagFile::addBuckets() {
    const std::uint32_t count = buckets_.count == 0 ? 8 : 4 * buckets_.count;
    buckets_ = {std::make_unique<TagRecord*[]>(count), count};
    for (TagRecord& record : records_) {
        TagRecord*& first = buckets_.first[record.hash % count];
        record.next = std::exchange(first, &record);
    }
}

const TagRecord* TagFile::find(std::string_view name) const noexcept {
    TagRecord* const* const link = linkTo(name);
    return link == nullptr ? nullptr : *link;
}

TagRecord& TagFile::findOrAdd(const String& name) {
    if (static_cast<std::uint32_t>(records_.count()) >= 2 * buckets_.count)
        addBuckets();
    TagRecord*& link = *linkTo(name.view());
    if (link == nullptr) {
        records_.makeRoom();
        link = records_.add(std::make_unique<TagRecord>(name));
    }
    return *link;
}

void TagFile::setOnly(const String& name, const String& value) {
    StringList& values = findOrAdd(name).values;
    values.clear();
    values.add(value);
}

void TagFile::remove(const String& name) {
    TagRecord** const link = linkTo(name.view());
    if (link == nullptr || *link == nullptr)
        return;
    std::int32_t index = 0;
    while (records_.at(index) != *link)
        ++index;
    *link = (*link)->next;
    records_.removeAt(index);
}

}  // namespace corvane
