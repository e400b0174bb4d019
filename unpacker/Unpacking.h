// Unpacking of a runtime installer into a directory.
#pragma once

#include <cstdio>

#include "foundation/String.h"

namespace corvane {

// Unpacks what stands behind the program in `installer`, `size` bytes long, into the existing
// `directory` (empty: the current one), with a dot on standard output for each percent. The `jvm`
// file comes last, when all else is there and was found whole. Raises a `LauncherException` when
// anything fails, when something is in the way, or at a request to end the process; what was
// written is removed then.
void unpackRuntime(std::FILE* installer, std::uint32_t size, const String& directory);

}  // namespace corvane
