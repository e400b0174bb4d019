// The running program.
#pragma once

#include <string>

namespace corvane::hosted {

// Absolute host path of the running program, without links; empty if the host doesn't tell.
std::string modulePath();

}  // namespace corvane::hosted
