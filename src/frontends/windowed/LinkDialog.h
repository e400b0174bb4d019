// A message box with an address in it that the user can open.
#pragma once

#include "foundation/String.h"
#include "frontends/windowed/UserInterface.h"

namespace corvane {

// Shows `text` and below it `address`, a web address, and returns when the user has answered. False
// where the system has no dialogs with links: before Windows Vista.
bool showLinkDialog(HWND owner, const String& title, const String& text, const String& address);

}  // namespace corvane
