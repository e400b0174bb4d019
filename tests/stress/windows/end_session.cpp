// Starts a launcher, and so many milliseconds later tells it as the system does that the session
// ends. Gives the launcher's exit value. Usage: end_session MILLISECONDS PROGRAM [ARGUMENT...]
#include <windows.h>

#include <cstdlib>
#include <string>

namespace {

// Longer than the system waits for an answer.
constexpr UINT answerMs = 5000;
constexpr int noAnswer = 98;

HWND mainWindowOf(DWORD process) {
    HWND window = nullptr;
    while ((window = FindWindowExA(nullptr, window, "LauncherMain", nullptr)) != nullptr) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner == process)
            break;
    }
    return window;
}

bool tell(HWND window, UINT message) {
    DWORD_PTR answer = 0;
    return SendMessageTimeoutA(window, message, TRUE, 0, SMTO_ABORTIFHUNG, answerMs, &answer) != 0;
}

// A launcher without a window has ended, or isn't that far.
bool endSession(const PROCESS_INFORMATION& launcher) {
    const HWND window = mainWindowOf(launcher.dwProcessId);
    return window == nullptr || (tell(window, WM_QUERYENDSESSION) && tell(window, WM_ENDSESSION)) ||
           !IsWindow(window);
}

std::wstring behindWord(const wchar_t* text) {
    const std::wstring line = text;
    const std::size_t end = line.find(line[0] == L'"' ? L'"' : L' ', 1);
    return line.substr(line.find_first_not_of(L' ', end + 1));
}

}  // namespace

int main(int, char** arguments) {
    std::wstring command = behindWord(behindWord(GetCommandLineW()).c_str());
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION launcher{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                        &startup, &launcher))
        return noAnswer;
    WaitForSingleObject(launcher.hProcess, std::strtoul(arguments[1], nullptr, 10));
    const bool answered = endSession(launcher);
    WaitForSingleObject(launcher.hProcess, INFINITE);
    DWORD value = 0;
    GetExitCodeProcess(launcher.hProcess, &value);
    return answered ? static_cast<int>(value) : noAnswer;
}
