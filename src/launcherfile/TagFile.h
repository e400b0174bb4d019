// `TagFile`: a named list of named value lists, and the reader and writer of its text format
// (docs/tag-files.md).
#pragma once

#include <cstdint>
#include <cstdio>

#include "foundation/ObjectArray.h"
#include "foundation/String.h"
#include "foundation/StringList.h"

namespace corvane {

struct TagRecord {
    explicit TagRecord(String tagName) : name(std::move(tagName)) {}

    const String name;
    StringList values;
    const std::uint32_t hash = hashOf(name.view());
    // The next record of the same bucket.
    TagRecord* next = nullptr;
};

// Names are compared byte for byte, and each names one record. Used by one thread at a time.
class TagFile {
  public:
    TagFile() = default;
    // Reads the file at `path`. Raises `LauncherException`: it can't be opened, or as `read`.
    explicit TagFile(const String& path);
    TagFile(const TagFile&) = delete;
    TagFile& operator=(const TagFile&) = delete;
    virtual ~TagFile() = default;

    // Reads tags from `offset` of `stream` up to the end of the file, or with a `length` >= 0 up to
    // the first tag at or behind `offset` + `length`. A name that is read again replaces the
    // earlier tag. `name` stands for the file in messages. Raises `LauncherException`, also when a
    // read fails; a syntax error is logged, too. What was read before stays.
    void read(std::FILE* stream, const String& name, std::int32_t offset, std::int32_t length);

    // Writes all records to a new text file. Raises `LauncherException` when that fails.
    void write(const String& path) const;

    // The value at `index` of a tag, or an empty text.
    String value(const char* name, std::uint32_t index) const;
    std::int32_t valueCount(const char* name) const;
    // All values of a tag, valid until the tag changes.
    const StringList& values(const char* name) const;
    // The first value as a number: true unless it is 0; `defaultValue` if it isn't a number.
    bool boolValue(const char* name, bool defaultValue) const;

    // Leaves the tag with this one value, in its place or as a new last record.
    void setValue(const char* name, const String& value);
    void addValue(const char* name, const String& value);

    // Sets the three tags that make a JVM file a resolved one: JVM_HOME, JVM_FILE, JVM_TEMP.
    void setJvmTags(const String& jvmHome, const String& jvmFile, bool temporary);

    const String& fileName() const noexcept { return fileName_; }
    // Lines that the latest read has taken.
    std::int32_t lineCount() const noexcept { return lineCount_; }
    // The records in their order; the caller reads them only.
    const ListOf<TagRecord>& records() const noexcept { return records_; }

  protected:
    // Called by `read`, for who wants to know where things stand: `lineCount` is the line of the
    // name, or of the value, which comes behind its name. An earlier tag of that name is still
    // there.
    virtual void onTag(const String&) {}
    virtual void onValue() {}

  private:
    // The buckets that the records' hashes lead to, at least half as many as there are records.
    struct Buckets {
        std::unique_ptr<TagRecord*[]> first;
        std::uint32_t count = 0;
    };

    TagRecord** linkTo(std::string_view name) const noexcept;
    void addBuckets();
    const TagRecord* find(std::string_view name) const noexcept;
    TagRecord& findOrAdd(const String& name);
    void setOnly(const String& name, const String& value);
    void remove(const String& name);
    String nextLine(std::FILE* stream);
    void readTag(std::FILE* stream, const String& line);
    void readBlock(std::FILE* stream, const String& name);
    [[noreturn]] void syntaxError(const char* message, std::int32_t line) const;

    ListOf<TagRecord> records_;
    Buckets buckets_;
    std::int32_t lineCount_ = 0;
    String fileName_;
};

}  // namespace corvane
