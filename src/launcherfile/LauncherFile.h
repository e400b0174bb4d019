// `LauncherFile`: the index of the files that are embedded in a launcher, and the objects made from
// them.
#pragma once

#include <cstdint>
#include <cstdio>

#include "foundation/ObjectArray.h"
#include "foundation/Owned.h"
#include "foundation/String.h"
#include "launcherfile/FileIndexEntry.h"

namespace corvane {

class Instructions;
class JvmSearch;
class LaunchScript;

// The author's text for a user whose machine has no suitable JVM.
struct JvmMessage {
    explicit JvmMessage(const TagFile& file)
        : tags(&file),
          message(file.value("MESSAGE", 0)),
          details(file.boolValue("DETAILS", false)),
          link(file.value("LINK", 0)) {}

    const TagFile* tags;  // not owned
    String message;
    bool details;  // whether the homes that won't do follow the message
    String link;   // an address that helps; empty for none
};

// The entries in index order; owns them and all that is made from them (which a higher floor does).
// The one instance is `RunContext.launcherFile`.
class LauncherFile final : public ListOf<FileIndexEntry> {
  public:
    // Reads the index from `stream`, a launcher file whose trailer ends `trailerOffset` (0 or
    // below) from its end, and logs it. Gives false, with no entries, when no trailer is there.
    // Raises `LauncherException`.
    bool readIndex(std::FILE* stream, std::int32_t trailerOffset);

    // Extracts every file into the current directory and writes `input.tag` there, with which
    // `-cv:in` runs them. Raises `LauncherException`.
    void extractAll() const;

    // The first entry with that id, or null.
    const FileIndexEntry* findById(std::int32_t id) const noexcept;

    // The first entry of a type, or null.
    const FileIndexEntry* findByType(FileType type) const noexcept;

    ListOf<TagFile> ownedTagFiles;  // loaded by name for the input file
    Owned<Instructions> instructions;
    Owned<LaunchScript> launchScript;
    std::unique_ptr<JvmMessage> jvmMessage;
    Owned<JvmSearch> jvmSearch;  // made on first use
    bool jvmFilesGiven = false;  // by the input file: embedded JVM files are not used
    bool indexLoaded = false;
};

}  // namespace corvane
