// The worker thread, on which the run goes while the main thread serves the windows.
#pragma once

#include "frontends/windowed/UserInterface.h"

namespace corvane {

// Takes the address of a `const ArgumentVector`. Carries out the run sequence, leaves the exit
// value in `RunContext.windowedExitValue` (-1 when an exception had no handler) and as its last act
// posts WM_DESTROY to `RunContext.mainWindow`. Without a front end or an argument nothing is run,
// and the exit value stays 0.
DWORD WINAPI workerMain(void* arguments);

}  // namespace corvane
