// The log file that `-cv:log` or an input file names.
#pragma once

#include "foundation/String.h"

namespace corvane {

enum class LogLevel { plain = 0, warning = 1, error = 2 };

// Appends a line to `RunContext.logFile`; opens and closes the file each time. Without a log file,
// or when it can't be opened, the line is lost without a word. The first line of a process is
// preceded by a separator line.
void logMessage(const String& text, LogLevel level = LogLevel::plain);

}  // namespace corvane
