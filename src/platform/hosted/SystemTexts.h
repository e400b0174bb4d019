// The system's words for its error codes.
#pragma once

#include "platform/hosted/WindowsTypes.h"

namespace corvane::hosted {

// Windows' English text for a code, without a line end, or null if there is none.
const char* systemText(DWORD code);

}  // namespace corvane::hosted
