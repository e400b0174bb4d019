// Command lines that are too long for the system.
#pragma once

#include "foundation/String.h"

namespace corvane {

// `commandLine`, whose program is a `java` of Java 9 or later, with all arguments in an argument
// file, a temporary file of the run. Raises `LauncherException`.
String throughArgumentFile(const String& commandLine);

}  // namespace corvane
