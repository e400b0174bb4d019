// The windows on the desktop.
#include "windowed/Desktop.h"

#include <commctrl.h>

#include <cstring>

namespace corvane::test {

namespace {

constexpr int messageBoxText = 0xFFFF;

struct Search {
    DWORD process;
    const std::function<bool(HWND)>& wanted;
    HWND found;
};

BOOL CALLBACK examine(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != search.process || !search.wanted(window))
        return TRUE;
    search.found = window;
    return FALSE;
}

bool isOfClass(HWND window, const char* name) {
    char className[64] = "";
    GetClassNameA(window, className, sizeof className);
    return std::strcmp(className, name) == 0;
}

HWND barOf(HWND dialog) {
    return GetDlgItem(dialog, static_cast<int>(DialogControl::bar));
}

}  // namespace

HWND Desktop::find(const std::function<bool(HWND)>& wanted) const {
    Search search{process_, wanted, nullptr};
    EnumWindows(examine, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND Desktop::mainWindow() const {
    return find([](HWND window) { return isOfClass(window, "LauncherMain"); });
}

HWND Desktop::progressDialog() const {
    return find(
        [](HWND window) { return isOfClass(window, "#32770") && barOf(window) != nullptr; });
}

HWND Desktop::question() const {
    return find([](HWND window) {
        return isOfClass(window, "#32770") && barOf(window) == nullptr && IsWindowVisible(window);
    });
}

bool Desktop::anythingVisible() const {
    return find([](HWND window) { return IsWindowVisible(window) != FALSE; }) != nullptr;
}

HWND Desktop::waitForProgressDialog() const {
    waitFor([this] { return progressDialog() != nullptr; });
    return progressDialog();
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
