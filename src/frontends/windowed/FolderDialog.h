// The shell's dialog for choosing a directory.
#pragma once

#include "foundation/String.h"
#include "frontends/windowed/UserInterface.h"

namespace corvane {

// Asks for a directory under the words `title`; empty when the user chose none, or something that
// has no path. `owner` may belong to another thread.
String chooseFolder(HWND owner, const String& title);

}  // namespace corvane
