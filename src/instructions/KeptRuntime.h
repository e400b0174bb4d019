// A Java runtime that an author wants kept between runs, so that only the first one unpacks it
// (docs/runtime.md).
#pragma once

#include "foundation/String.h"
#include "foundation/StringList.h"
#include "launcherfile/FileIndexEntry.h"
#include "platform/Platform.h"

namespace corvane {

// The place of kept runtimes, for the length of an installation: nobody else changes it meanwhile.
// In it lie a directory for each runtime, under a name made from its archive, and beside that one
// for the marks of the runs that use it.
class KeptRuntime {
  public:
    // For an installer that names no place, or one that can't be used (a warning in the log), it
    // isn't `available`. Waits while another run holds the place, up to a minute.
    explicit KeptRuntime(const FileIndexEntry& installer);
    KeptRuntime(const KeptRuntime&) = delete;
    KeptRuntime& operator=(const KeptRuntime&) = delete;
    // Removes a runtime in the making.
    ~KeptRuntime();

    bool available() const noexcept { return static_cast<bool>(lock_); }
    const String& home() const noexcept { return home_; }

    // Whether the runtime is there, with all its files in their sizes.
    bool isWhole() const;
    // Makes the directory into which it is unpacked. Empty if it can't be made, or a damaged
    // runtime that is there can't go.
    String prepare();
    // What was unpacked becomes the runtime; its `jvm` file is a resolved one. False when it has
    // none, or it can't be put in its place.
    bool finish();

    // Marks the runtime as used until the process ends, and removes those that no run uses.
    void use();

  private:
    bool hasFile(const String& line) const;
    bool retire(const String& name) const;
    void removeUnused() const;

    const String installer_;  // the name of its file
    String place_;
    String name_;
    String home_;
    String part_;
    FileGuard lock_;
};

}  // namespace corvane
