// The progress dialog of the run (`RunContext.dialogWindow`): status line, bar and timers. It
// belongs to the main thread. Every operation but the first may be called on any thread: what only
// the main thread can do reaches it as a message. Without a dialog most do nothing.
#pragma once

#include <cstdint>

#include "foundation/String.h"
#include "frontends/windowed/UserInterface.h"

namespace corvane {

// Makes the dialog for a launcher of `kind`, hidden and centred, on the thread that will serve its
// messages. Null if the system refuses.
HWND createProgressDialog(std::int32_t kind);

// Gives a window the program's icon, in both its sizes.
void setProgramIcon(HWND window);

// The dialog; null while there is none.
HWND progressDialog() noexcept;

void setDialogStatus(const String& text);

// Both raise a `LauncherException` (message 20) when there is no bar. They don't wait for the main
// thread: whoever copies files goes on while that one is busy, at worst with deleting them.
void stepBar(std::int32_t delta);
void setBar(std::int32_t position);

// Hides the dialog, at once or after `delayMs` milliseconds in which the bar goes round.
void hideDialog(std::uint32_t delayMs);

// Stops a delayed hiding and the bar's going round.
void stopDialogTimers();

}  // namespace corvane
