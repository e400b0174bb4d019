// The main window.
#include "frontends/windowed/MainWindow.h"

#include <utility>

#include "base/Messages.h"
#include "base/RunContext.h"
#include "foundation/Exceptions.h"
#include "frontends/windowed/Decisions.h"
#include "frontends/windowed/ProgressDialog.h"
#include "frontends/windowed/Worker.h"
#include "host/Paths.h"
#include "host/TempFiles.h"
#include "launcherfile/LauncherKind.h"

namespace corvane {

namespace {

HINSTANCE module() {
    return static_cast<HINSTANCE>(runContext().moduleHandle);
}

// Also finds the trailer for the run.
std::int32_t ownKind() {
    try {
        return launcherKind(modulePath().cstr());
    } catch (const LauncherException&) {
        // The run will meet and report it.
        return -1;
    }
}

bool startWorker(void* arguments) {
    RunContext& context = runContext();
    if (!context.workerPending)
        return true;
    context.workerPending = false;
    DWORD id = 0;  // which the older family of Windows insists on telling
    context.workerThread = CreateThread(nullptr, 0, workerMain, arguments, 0, &id);
    return context.workerThread != nullptr;
}

LRESULT onCreate(HWND window, WPARAM wParam, LPARAM lParam) {
    const auto* const creation = reinterpret_cast<const CREATESTRUCTA*>(lParam);
    // The worker may post to the window before its maker gets hold of it.
    runContext().mainWindow = window;
    runContext().dialogWindow = createProgressDialog(ownKind());
    const LRESULT result = DefWindowProcA(window, WM_CREATE, wParam, lParam);
    return startWorker(creation->lpCreateParams) ? result : -1;
}

void onDestroy() {
    const HWND dialog = progressDialog();
    if (dialog != nullptr && IsWindow(dialog))
        DestroyWindow(dialog);
    void* const worker = std::exchange(runContext().workerThread, nullptr);
    if (worker != nullptr)
        CloseHandle(worker);
    PostQuitMessage(runContext().windowedExitValue);
}

void onEndSession(WPARAM ending, LPARAM flags) {
    if (sessionEnds(ending != FALSE, static_cast<std::uint32_t>(flags)))
        runContext().sessionEnding = true;
    cleanupAtExit();
}

LRESULT onWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            return onCreate(window, wParam, lParam);
        case WM_DESTROY:
            onDestroy();
            return 0;
        case WM_CLOSE:
            // What a task manager sends to end the program politely; the run ends it.
            runContext().cancelRequested.request();
            return 0;
        case WM_ENDSESSION:
            onEndSession(wParam, lParam);
            return 0;
        default:
            return runContext().win9xFamily ? DefWindowProcA(window, message, wParam, lParam)
                                            : DefWindowProcW(window, message, wParam, lParam);
    }
}

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        return onWindowMessage(window, message, wParam, lParam);
    } catch (...) {
        // No exception finds its way through the system's frames. Of a window in the making, -1
        // says that it can't be had.
        return message == WM_CREATE ? -1 : 0;
    }
}

void registerWindowClass(const char* name) {
    WNDCLASSEXA windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = windowProcedure;
    windowClass.hInstance = module();
    windowClass.hIcon = LoadIconA(module(), IDI_APPLICATION);
    windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    // A colour of the system is named by its index plus 1.
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<ULONG_PTR>(COLOR_WINDOW + 1));
    windowClass.lpszClassName = name;
    RegisterClassExA(&windowClass);
}

}  // namespace

bool createMainWindow(const ArgumentVector& arguments) {
    RunContext& context = runContext();
    context.windowClassName = loadMessage(MessageId::windowClass);
    const char* const className = context.windowClassName.cstr();
    registerWindowClass(className);
    // Without a caption: the default procedure of the NT family would take it for wide text.
    const HWND window = CreateWindowExA(0, className, nullptr, WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                                        CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr,
                                        nullptr, module(), const_cast<ArgumentVector*>(&arguments));
    if (window == nullptr)
        return false;
    setProgramIcon(window);
    ShowWindow(window, SW_HIDE);
    UpdateWindow(window);
    return true;
}

std::int32_t runMessageLoop() {
    const bool ansi = runContext().win9xFamily;
    MSG message{};
    while ((ansi ? GetMessageA(&message, nullptr, 0, 0) : GetMessageW(&message, nullptr, 0, 0)) !=
           0) {
        if (progressDialog() != nullptr && IsDialogMessageA(progressDialog(), &message))
            continue;
        TranslateMessage(&message);
        if (ansi)
            DispatchMessageA(&message);
        else
            DispatchMessageW(&message);
    }
    return static_cast<std::int32_t>(message.wParam);
}

}  // namespace corvane
