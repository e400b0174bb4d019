// `FileIndexEntry`: one embedded file, as the index of a launcher file describes it.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>

#include "foundation/String.h"
#include "launcherfile/PayloadFormat.h"
#include "launcherfile/TagFile.h"

namespace corvane {

class FileIndexEntry {
  public:
    // Reads one entry from the stream's position. Raises `LauncherException` for a field that is
    // missing or can't be.
    void read(std::FILE* stream);

    // Parses a tag-bearing file into a new `tags`; does nothing for other types. Raises
    // `LauncherException`.
    void loadTags(std::FILE* stream);

    // Copies the embedded file from the launcher into `directory` (empty: the current one) under
    // its `name`, with a disk space check, a progress tick per block, and an eye on the cancel
    // flag. Gives the path written. Raises `LauncherException`; what was written then stays.
    String extract(const String& directory) const;

    FileType type = FileType::instructions;
    std::unique_ptr<TagFile> tags;
    std::int32_t id = -1;  // the number by which instructions refer to the file
    std::int32_t length = 0;
    std::int32_t offset = 0;
    String name;
    // What the file unpacks to, for the disk space check.
    bool hasDecompressedInfo = false;
    std::int32_t decompressedFileCount = 0;
    std::int32_t decompressedSize = 0;
};

}  // namespace corvane
