// The debug log that the environment variable DBGWIN32PPK names: a few lines of start and cleanup.
#pragma once

#include "foundation/String.h"

namespace corvane {

// Appends `text` as a line. A log that can't be opened loses it without a word.
void debugLogLine(const String& text);

}  // namespace corvane
