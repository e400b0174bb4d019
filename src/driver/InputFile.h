// The two options that do their work at once: `-cv:extract` unpacks the launcher, `-cv:in` lets
// another program drive it by an input file (docs/driving.md).
#pragma once

#include "driver/RunDecision.h"
#include "foundation/String.h"

namespace corvane {

// Raise `LauncherException`.
void runExtractOption(RunDecision& decision);
// `name` is the argument behind the option, perhaps within quotes.
void runInputFileOption(const String& name, RunDecision& decision);

}  // namespace corvane
