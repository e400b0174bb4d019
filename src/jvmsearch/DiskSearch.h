// The scan of the machine's drives for Java executables.
#pragma once

#include "foundation/String.h"
#include "foundation/StringList.h"

namespace corvane {

// Told of each executable that a scan meets.
class ExecutableHandler {
  public:
    // Takes the executable's full path; true ends the scan.
    virtual bool onExecutableFound(const String& path) = 0;

  protected:
    ~ExecutableHandler() = default;
};

// Appends the fixed and network drives, as "C:", in the system's order. Raises a
// `LauncherException` when the system has no drives at all.
void listSearchDrives(StringList& drives);

// Walks all search drives for files whose path ends with one of `exeSuffixes`, case ignored, until
// `handler` ends it or the user cancels. Leaves out the temporary directory and the recycle bins in
// the drives' roots. Raises `LauncherException`.
void scanDrives(const StringList& exeSuffixes, ExecutableHandler& handler);

}  // namespace corvane
