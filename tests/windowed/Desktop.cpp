// The windows on the desktop.
#include "windowed/Desktop.h"

#include <commctrl.h>

namespace corvane::test {

namespace {

constexpr int messageBoxText = 0xFFFF;
constexpr const char* dialogClass = "#32770";

bool hasBar(HWND dialog) {
    return GetDlgItem(dialog, static_cast<int>(DialogControl::bar)) != nullptr;
}

bool isVisible(HWND window) {
    return IsWindowVisible(window) != FALSE;
}

}  // namespace

HWND Desktop::find(const char* className, bool (*wanted)(HWND)) const {
    HWND window = nullptr;
    while ((window = FindWindowExA(nullptr, window, className, nullptr)) != nullptr) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process == process_ && wanted(window))
            break;
    }
    return window;
}

HWND Desktop::mainWindow() const {
    return find("LauncherMain", [](HWND) { return true; });
}

HWND Desktop::progressDialog() const {
    return find(dialogClass, hasBar);
}

HWND Desktop::question() const {
    return find(dialogClass, [](HWND window) { return !hasBar(window) && isVisible(window); });
}

bool Desktop::anythingVisible() const {
    return find(nullptr, isVisible) != nullptr;
}

HWND Desktop::waitForQuestion() const {
    waitFor([this] { return question() != nullptr; });
    return question();
}

std::int32_t Desktop::barPosition() const {
    return static_cast<std::int32_t>(SendMessageA(control(DialogControl::bar), PBM_GETPOS, 0, 0));
}

HWND Desktop::control(DialogControl id) const {
    return GetDlgItem(progressDialog(), static_cast<int>(id));
}

std::string Desktop::textOf(HWND window) {
    char text[2048] = "";
    SendMessageA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
}

std::string Desktop::messageOf(HWND box) {
    return textOf(GetDlgItem(box, messageBoxText));
}

void Desktop::answer(HWND question, int button) {
    if (button == 0)
        PostMessageA(question, WM_CLOSE, 0, 0);
    else
        PostMessageA(question, WM_COMMAND, static_cast<WPARAM>(button), 0);
    waitFor([question] { return !IsWindow(question); });
}

}  // namespace corvane::test
