// The row type of the table of template functions.
#pragma once

#include <cstdint>

#include "launch/LaunchScript.h"

namespace corvane {

struct LaunchScript::Function {
    const char* name;  // null in the row that ends the table
    std::int32_t fewest;
    std::int32_t most;
    const char* wrongNumber;
    String (LaunchScript::*evaluate)(const StringList& arguments);
};

}  // namespace corvane
