// The argument list of a function in a command template.
#pragma once

#include <cstddef>

#include "foundation/String.h"
#include "foundation/StringList.h"

namespace corvane {

// Reads a function's argument list from `pos`, which moves behind it, and adds to `arguments`.
// Raises as `scriptError`.
void parseArguments(const String& text, std::size_t& pos, StringList& arguments);

// Logs the template as it stands and raises a `LauncherException` "Launch script error: " +
// `message`.
[[noreturn]] void scriptError(const String& text, const String& message);

}  // namespace corvane
