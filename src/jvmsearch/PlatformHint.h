// Platform hints: registry values that hold a JVM's home.
#pragma once

#include "foundation/String.h"
#include "foundation/StringList.h"

namespace corvane {

// Clears `paths` and adds at most one text: the registry value that `hint` names
// (\HIVE\KEY\VALUE, or \HIVE\KEY for the key's default value). What can't be read is a warning in
// the log; an unknown hive raises a `LauncherException`.
void resolvePlatformHint(const String& hint, StringList& paths);

// Clears `paths` and adds the places where this platform keeps its JVMs. None on Windows.
void listPlatformJvmPaths(StringList& paths);

}  // namespace corvane
