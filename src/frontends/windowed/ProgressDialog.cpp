// The progress dialog.
#include "frontends/windowed/ProgressDialog.h"

#include "base/Messages.h"
#include "base/RunContext.h"
#include "base/Ui.h"
#include "foundation/Exceptions.h"
#include "frontends/windowed/Decisions.h"

namespace corvane {

namespace {

// Messages of our own to the dialog. Timers can be set and killed by the thread of their window
// alone, and a step of the bar is a read and a write.
constexpr UINT stepRequest = WM_APP;             // by wParam
constexpr UINT startTimersRequest = WM_APP + 1;  // to hide after wParam milliseconds
constexpr UINT stopTimersRequest = WM_APP + 2;

int idOf(DialogControl control) {
    return static_cast<int>(control);
}

HWND barOf(HWND dialog) {
    const HWND bar = GetDlgItem(dialog, idOf(DialogControl::bar));
    if (bar == nullptr)
        throw LauncherException(loadMessage(MessageId::progressBarMissing));
    return bar;
}

void startTimers(HWND dialog, UINT delayMs) {
    SetTimer(dialog, runContext().hideTimerId, delayMs, nullptr);
    SetTimer(dialog, runContext().tickTimerId, tickPeriodMs, nullptr);
}

void killTimers(HWND dialog) {
    KillTimer(dialog, runContext().tickTimerId);
    KillTimer(dialog, runContext().hideTimerId);
}

void onTimer(HWND dialog, WPARAM timerId) {
    if (timerId == runContext().tickTimerId) {
        uiStepProgress(tickStep);
    } else if (timerId == runContext().hideTimerId) {
        ShowWindow(dialog, SW_HIDE);
        killTimers(dialog);
    }
}

void moveBar(HWND dialog, std::int32_t delta) {
    const HWND bar = barOf(dialog);
    const auto current = static_cast<std::int32_t>(SendMessageA(bar, PBM_GETPOS, 0, 0));
    SendMessageA(bar, PBM_SETPOS, static_cast<WPARAM>(positionAfterStep(current, delta)), 0);
}

void onCommand(int control) {
    if (control == idOf(DialogControl::cancel))
        runContext().cancelRequested.request();
}

// Gives whether the message is one of the dialog's own.
bool onDialogMessage(HWND dialog, UINT message, WPARAM wParam) {
    switch (message) {
        case WM_INITDIALOG:
            SetDlgItemTextA(dialog, idOf(DialogControl::text),
                            loadMessage(MessageId::preparingInstallation).cstr());
            return true;
        case WM_CLOSE:
            // Long operations poll the flag. The dialog stays.
            runContext().cancelRequested.request();
            return true;
        case WM_COMMAND:
            onCommand(LOWORD(wParam));
            return true;
        case WM_TIMER:
            onTimer(dialog, wParam);
            return true;
        case stepRequest:
            moveBar(dialog, static_cast<std::int32_t>(wParam));
            return true;
        case startTimersRequest:
            startTimers(dialog, static_cast<UINT>(wParam));
            return true;
        case stopTimersRequest:
            killTimers(dialog);
            return true;
        default:
            return false;
    }
}

INT_PTR CALLBACK dialogProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    try {
        return onDialogMessage(dialog, message, wParam) ? TRUE : FALSE;
    } catch (...) {
        // No exception finds its way through the system's frames.
        return TRUE;
    }
}

void centre(HWND dialog) {
    RECT frame{};
    GetWindowRect(dialog, &frame);
    const Size size{frame.right - frame.left, frame.bottom - frame.top};
    const auto [x, y] =
        centred({GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}, size);
    MoveWindow(dialog, x, y, size.width, size.height, FALSE);
}

}  // namespace

HWND createProgressDialog(std::int32_t kind) {
    const auto id = static_cast<WORD>(dialogFor(kind));
    const HWND dialog = CreateDialogParamA(static_cast<HINSTANCE>(runContext().moduleHandle),
                                           MAKEINTRESOURCEA(id), nullptr, dialogProcedure, 0);
    if (dialog == nullptr)
        return nullptr;
    setProgramIcon(dialog);
    ShowWindow(dialog, SW_HIDE);
    centre(dialog);
    return dialog;
}

// A class can't have it: the icons of the program have no number that a class could name.
void setProgramIcon(HWND window) {
    const auto set = [window](WPARAM kind, int width, int height) {
        HANDLE const icon = LoadImageA(
            static_cast<HINSTANCE>(runContext().moduleHandle), MAKEINTRESOURCEA(programIcon),
            IMAGE_ICON, GetSystemMetrics(width), GetSystemMetrics(height), LR_SHARED);
        SendMessageA(window, WM_SETICON, kind, reinterpret_cast<LPARAM>(icon));
    };
    set(ICON_BIG, SM_CXICON, SM_CYICON);
    set(ICON_SMALL, SM_CXSMICON, SM_CYSMICON);
}

HWND progressDialog() noexcept {
    return static_cast<HWND>(runContext().dialogWindow);
}

void setDialogStatus(const String& text) {
    SetDlgItemTextA(progressDialog(), idOf(DialogControl::status), text.cstr());
}

void stepBar(std::int32_t delta) {
    barOf(progressDialog());
    PostMessageA(progressDialog(), stepRequest, static_cast<WPARAM>(delta), 0);
}

void setBar(std::int32_t position) {
    PostMessageA(barOf(progressDialog()), PBM_SETPOS, static_cast<WPARAM>(positionShown(position)),
                 0);
}

void hideDialog(std::uint32_t delayMs) {
    const HWND dialog = progressDialog();
    const HWND cancel = GetDlgItem(dialog, idOf(DialogControl::cancel));
    if (cancel != nullptr)
        EnableWindow(cancel, FALSE);
    if (delayMs == 0)
        ShowWindow(dialog, SW_HIDE);
    else
        SendMessageA(dialog, startTimersRequest, delayMs, 0);
}

void stopDialogTimers() {
    SendMessageA(progressDialog(), stopTimersRequest, 0, 0);
}

}  // namespace corvane
