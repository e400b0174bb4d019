// The makers of the front ends. Each gives a front end that the caller owns and that keeps
// pointing to `arguments`.
#pragma once

#include "base/LauncherUI.h"
#include "driver/ArgumentVector.h"
#include "foundation/Owned.h"

namespace corvane {

Owned<LauncherUI> makeConsoleFrontEnd(const ArgumentVector& arguments);

// For a launcher of the kind that is a command-line tool.
Owned<LauncherUI> makeToolFrontEnd(const ArgumentVector& arguments);

// The console's, where there is no windowed one.
Owned<LauncherUI> makeWindowedFrontEnd(const ArgumentVector& arguments);

}  // namespace corvane
