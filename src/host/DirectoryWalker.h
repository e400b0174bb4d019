// `DirectoryWalker`: a walk over a directory tree with hooks, shared by the disk search and the
// recursive delete.
#pragma once

#include <cstdint>

#include "foundation/String.h"
#include "foundation/StringList.h"

namespace corvane {

// Depth first, and of each directory all files before any subdirectory; the subdirectory listed
// last is taken up first. The progress bar moves once per 100 files.
class DirectoryWalker {
  public:
    // With `cancellable`, a request to cancel ends a walk at the next entry.
    explicit DirectoryWalker(bool cancellable) : cancellable_(cancellable) {}

    // True when `onFile` asked to stop; a cancelled walk gives false. A directory that can't be
    // listed is passed over, with a warning if it can be opened and not be read; a listing that
    // breaks off raises a `LauncherException`.
    virtual bool walk(const String& root);

    // Takes the full path of a file, valid for the call; true stops the walk.
    virtual bool onFile(const String& path) = 0;

    // Takes a directory with a trailing separator; true leaves out all that lies in it.
    virtual bool skipDirectory(const String& directory);

    // Takes a link to a directory (any directory with a reparse point): whether the walk goes
    // through it. Otherwise it is a file like others.
    virtual bool entersLink(const String& path);

  protected:
    ~DirectoryWalker() = default;

    // The directories taken up so far, in that order, without the separator that the walk adds.
    const StringList& visited() const noexcept { return visited_; }

  private:
    bool canceled() const noexcept;
    bool listDirectory(const String& directory);
    bool onEntry(String& path, std::uint32_t attributes);

    StringList visited_;
    StringList pending_;
    bool cancellable_;
    std::uint32_t fileCount_ = 0;
};

}  // namespace corvane
