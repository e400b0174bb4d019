// The worker thread.
#include "frontends/windowed/Worker.h"

#include "base/RunContext.h"
#include "base/Ui.h"
#include "driver/ArgumentVector.h"
#include "driver/RunSequence.h"
#include "frontends/windowed/ProgressDialog.h"

namespace corvane {

namespace {

class WindowedRun final : public RunObserver {
  public:
    void onRunEnded(std::int32_t result) override {
        stopDialogTimers();
        runContext().windowedExitValue = result;
    }
    // Unlike the console's, silenced by `silent`.
    void showFailureText(const String& text) override { uiShowMessage(text); }
};

void carryOut(const ArgumentVector& arguments) {
    if (runContext().ui == nullptr || arguments.count() < 1)
        return;
    try {
        WindowedRun run;
        runSequence(arguments, run);
    } catch (...) {
        // There is nobody above a thread to take it.
        runContext().windowedExitValue = -1;
    }
}

void postEnd() {
    // While the main thread is busy with deleting files, steps of the bar may fill its queue.
    constexpr DWORD retryMs = 50;
    const HWND window = static_cast<HWND>(runContext().mainWindow);
    while (!PostMessageA(window, WM_DESTROY, 0, 0) && GetLastError() == ERROR_NOT_ENOUGH_QUOTA)
        Sleep(retryMs);
}

}  // namespace

DWORD WINAPI workerMain(void* arguments) {
    carryOut(*static_cast<const ArgumentVector*>(arguments));
    postEnd();
    return 0;
}

}  // namespace corvane
