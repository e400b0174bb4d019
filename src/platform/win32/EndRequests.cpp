// Requests to end, as the console's control handler hears of them, on a thread of the system's.
#include <atomic>

#include "platform/Platform.h"

namespace corvane {

namespace {

std::atomic<int> requests = 0;
std::atomic<bool> isNear = false;

BOOL WINAPI onControl(DWORD event) {
    const bool final = event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT;
    isNear = isNear || final;
    ++requests;
    // The process would end with the handler, but the run is still to clean up. What the handler
    // may take is the system's affair.
    if (final)
        Sleep(INFINITE);
    return TRUE;
}

BOOL CALLBACK closeIfOf(HWND window, LPARAM processId) {
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == static_cast<DWORD>(processId) && IsWindowVisible(window))
        PostMessageA(window, WM_CLOSE, 0, 0);
    return TRUE;
}

}  // namespace

// For the life of the process: while a handler waits, none can be taken off.
void watchEndRequests() {
    SetConsoleCtrlHandler(onControl, TRUE);
}

int endRequests() noexcept {
    return requests;
}

DWORD endRequestValue() noexcept {
    return requests == 0 ? 0 : static_cast<DWORD>(STATUS_CONTROL_C_EXIT);
}

bool endIsNear() noexcept {
    return isNear;
}

// The console itself tells those that share it.
void requestChildEnd(const PROCESS_INFORMATION& child, bool detached) {
    if (detached)
        EnumWindows(closeIfOf, static_cast<LPARAM>(child.dwProcessId));
}

}  // namespace corvane
