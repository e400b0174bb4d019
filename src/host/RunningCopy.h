// The removal of a running copy of the program from its temporary directory, which no program can
// do for itself.
#pragma once

namespace corvane {

// Arranges for `launcherPath` and its directory to go away. On the NT family a hidden batch file
// tries until the program has ended, or, while the session is ending, the system is asked to
// delete both at the next boot; on the Windows 95 family the wininit file does that. Failures are
// not reported: the copy then stays.
void removeRunningCopy();

}  // namespace corvane
