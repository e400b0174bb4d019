// The environment as children get it.
#pragma once

#include <string>
#include <vector>

namespace corvane::hosted {

// "NAME=value" for each variable; values that the launcher set have their mapped paths in host
// form, inherited ones are as they were.
std::vector<std::string> childEnvironment();

// Value of a variable; empty if it isn't set. Names are found as GetEnvironmentVariableA finds
// them.
std::string environmentValue(const char* name);

// The user's locale, as the host's own programs find it; empty if none is set.
const char* environmentLocale();

}  // namespace corvane::hosted
