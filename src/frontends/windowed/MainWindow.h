// The main window, which is never shown: it owns the message loop, makes the progress dialog,
// starts the worker thread and receives the message that ends the run. All on the main thread.
#pragma once

#include <cstdint>

#include "driver/ArgumentVector.h"
#include "frontends/windowed/UserInterface.h"

namespace corvane {

// Makes the window and the dialog and starts the worker on a run with `arguments`, unless
// `RunContext.workerPending` says that there is one already. False if window or worker can't be
// had.
bool createMainWindow(const ArgumentVector& arguments);

// Serves messages until the run has ended; gives its exit value.
std::int32_t runMessageLoop();

}  // namespace corvane
