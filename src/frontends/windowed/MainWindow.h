// The main window, which is never shown: it owns the message loop, makes the progress dialog,
// starts the worker thread and receives the message that ends the run. All on the main thread.
#pragma once

#include <cstdint>

#include "frontends/windowed/UserInterface.h"

namespace corvane {

// The work of the worker thread. When it is done it posts WM_DESTROY to `RunContext.mainWindow`,
// which is set before it starts.
struct WorkerStart {
    LPTHREAD_START_ROUTINE routine;
    void* argument;
};

// Makes the window and the dialog and starts the worker, unless `RunContext.workerPending` says
// that there is one already. False if window or worker can't be had.
bool createMainWindow(WorkerStart start);

// Serves messages until the run has ended; gives its exit value.
std::int32_t runMessageLoop();

}  // namespace corvane
