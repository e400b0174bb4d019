// The run driver: the option loop, the loading of the launcher file, the script, one exit value.
#pragma once

#include <cstdint>

#include "foundation/String.h"
#include "foundation/StringList.h"

namespace corvane {

// Runs the launcher at `path` (this executable) with `args`, the arguments behind the program name,
// and gives the exit value. Lets no `LauncherException` out: its text is shown and logged, and the
// value is -1. Of a run that was asked to end it is that of the application that ran then, else the
// one of the request.
std::int32_t runLauncher(const StringList& args, const String& path);

// Executes the options from left to right, then, unless one of them did the work instead, loads
// the launcher file and runs its script. Gives the exit value. Raises `LauncherException`.
std::int32_t processOptions(const StringList& args);

}  // namespace corvane
