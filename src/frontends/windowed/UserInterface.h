// Windows' user interface: what platform/Platform.h brings of it, and beyond that the common
// controls, COM and the shell's dialogs.
#pragma once

// The system's headers are written in what the platform's brings.
// clang-format off
#include "platform/Platform.h"
#include <commctrl.h>
#include <objbase.h>
#include <shlobj.h>
// clang-format on
