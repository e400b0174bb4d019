// Runs a program under Wine and writes its whole exit value, of which the host sees eight bits, to
// a file. Usage: exit_value FILE PROGRAM [ARGUMENT...]
#include <windows.h>

#include <cstdio>
#include <cwchar>

namespace {

// The command line behind its first word, quoted or not.
wchar_t* behindWord(wchar_t* text) {
    const wchar_t* const end = *text == L'"' ? L"\"" : L" ";
    text += *text == L'"';
    text += std::wcscspn(text, end);
    text += *text == L'"';
    return text + std::wcsspn(text, L" ");
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 3)
        return 2;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION child{};
    if (!CreateProcessW(nullptr, behindWord(behindWord(GetCommandLineW())), nullptr, nullptr, TRUE,
                        0, nullptr, nullptr, &startup, &child))
        return 3;
    WaitForSingleObject(child.hProcess, INFINITE);
    DWORD exitValue = 0;
    GetExitCodeProcess(child.hProcess, &exitValue);
    std::FILE* const file = std::fopen(arguments[1], "w");
    if (file == nullptr)
        return 4;
    std::fprintf(file, "%ld", static_cast<long>(exitValue));
    return std::fclose(file);
}
