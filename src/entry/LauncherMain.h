// `launcherMain`, the entry of the process.
#pragma once

#include <cstdint>

namespace corvane {

// The whole process: system family, debug log, arguments, front end, run. Gives the exit value, -1
// if the run didn't come to one. Lets no exception out. Expects `RunContext.launcherFile` to be
// made.
std::int32_t launcherMain();

// Whether this is the Windows 95, 98 and Me family; false when the version can't be read.
bool detectWin9xFamily();

}  // namespace corvane
