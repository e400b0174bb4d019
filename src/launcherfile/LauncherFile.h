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
    explicit JvmMessage(const TagFile& file) : tags(&file), message(file.value("MESSAGE", 0)) {}

    const TagFile* tags;  // not owned
    String message;
};

// The entries in index order; owns them and all that is loaded from them. The one instance is
// `RunContext.launcherFile`.
class LauncherFile final : public ListOf<FileIndexEntry> {
  public:
    // Reads the index of `launcherPath`, and with `withContents` also the tag-bearing files, and
    // makes the objects below from them. Looks for the trailer where `RunContext.trailerOffset`
    // says; without one the index is empty. Raises `LauncherException`. Once it has run, a further
    // call does nothing. (launcherfile/assembly)
    void load(bool withContents);

    // Makes objects from the files that an input file names; they take the place of embedded ones
    // in a `load` behind this. Raises `LauncherException`. (launcherfile/assembly)
    void loadFromInputFile(const TagFile& tags);

    // Reads the index from `stream`, a launcher file whose trailer ends `trailerOffset` (0 or
    // below) from its end, and logs it. Gives false, with no entries, when no trailer is there.
    // Raises `LauncherException`.
    bool readIndex(std::FILE* stream, std::int32_t trailerOffset);

    // Extracts every file into the current directory and writes `input.tag` there, with which
    // `-cv:in` runs them. Raises `LauncherException`.
    void extractAll() const;

    // The first entry with that id, or null.
    FileIndexEntry* findById(std::int32_t id) const noexcept;

    // The first entry of a type, or null.
    FileIndexEntry* findByType(FileType type) const noexcept;

    ListOf<TagFile> ownedTagFiles;  // loaded by name for the input file
    Owned<Instructions> instructions;
    Owned<LaunchScript> launchScript;
    std::unique_ptr<JvmMessage> jvmMessage;
    Owned<JvmSearch> jvmSearch;  // made on first use (jvm/search)
    bool jvmFilesGiven = false;  // by the input file: embedded JVM files are not used
    bool indexLoaded = false;

  private:
    void loadIndexAndContents(bool withContents);
    void loadContents(std::FILE* stream);
    TagFile& loadByName(const String& path);
};

}  // namespace corvane
