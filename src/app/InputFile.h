// The two options that do their work at once: `-cv:extract` unpacks the launcher, `-cv:in` lets
// another program drive it by an input file (docs/driving.md).
#pragma once

#include <cstdint>

#include "foundation/String.h"

namespace corvane {

// What the options decide about the rest of the run.
struct RunDecision {
    bool runScript = true;    // the instruction script runs behind the option loop
    std::int32_t result = 0;  // the exit value if it doesn't
};

// Loads the launcher file, as all that do the work do first (`LauncherFile::load`). Raises
// `LauncherException`.
void loadLauncherFile(bool withContents);

// Raise `LauncherException`.
void runExtractOption(RunDecision& decision);
// `name` is the argument behind the option, perhaps within quotes.
void runInputFileOption(const String& name, RunDecision& decision);

}  // namespace corvane
