// Runs a program under Wine and writes its whole exit value, of which the host sees eight bits, to
// a file. With --console the program has a console of its own, on which standard input is typed;
// what its screen shows when all programs on it have ended goes to standard output.
// Usage: exit_value FILE [--console] PROGRAM [ARGUMENT...]
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string>

namespace {

// The command line behind its first word, quoted or not.
wchar_t* behindWord(wchar_t* text) {
    const wchar_t* const end = *text == L'"' ? L"\"" : L" ";
    text += *text == L'"';
    text += std::wcscspn(text, end);
    text += *text == L'"';
    return text + std::wcsspn(text, L" ");
}

std::wstring wide(const std::string& text) {
    std::wstring out(text.size(), L'\0');
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                           out.data(), static_cast<int>(out.size()));
    out.resize(static_cast<std::size_t>(length));
    return out;
}

std::string narrow(const std::wstring& text) {
    std::string out(text.size() * 3, '\0');
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out.data(),
                            static_cast<int>(out.size()), nullptr, nullptr);
    out.resize(static_cast<std::size_t>(length));
    return out;
}

std::wstring standardInput() {
    _setmode(_fileno(stdin), _O_BINARY);  // else Ctrl-Z would end it
    std::string text;
    for (int c = std::getchar(); c != EOF; c = std::getchar())
        text += static_cast<char>(c);
    return wide(text);
}

// A console whose code pages have few letters, and not the same ones.
class Console {
  public:
    Console() {
        FreeConsole();
        AllocConsole();
        SetConsoleCP(437);
        SetConsoleOutputCP(850);
        keyboard_ = open("CONIN$");
        screen_ = open("CONOUT$");
        SetConsoleScreenBufferSize(screen_, {width, height});
    }

    // As a command prompt does: programs of the console inherit what this one has.
    void becomeStandard() const {
        SetStdHandle(STD_INPUT_HANDLE, keyboard_);
        SetStdHandle(STD_OUTPUT_HANDLE, screen_);
        SetStdHandle(STD_ERROR_HANDLE, screen_);
    }

    void type(const std::wstring& text) const {
        for (const wchar_t letter : text) {
            INPUT_RECORD key{};
            key.EventType = KEY_EVENT;
            key.Event.KeyEvent.bKeyDown = TRUE;
            key.Event.KeyEvent.wRepeatCount = 1;
            key.Event.KeyEvent.wVirtualKeyCode = letter == L'\n' ? VK_RETURN : 0;
            key.Event.KeyEvent.uChar.UnicodeChar = letter == L'\n' ? L'\r' : letter;
            DWORD written = 0;
            WriteConsoleInputW(keyboard_, &key, 1, &written);
        }
    }

    // All lines down to the cursor's.
    std::wstring shown() const {
        CONSOLE_SCREEN_BUFFER_INFO state{};
        GetConsoleScreenBufferInfo(screen_, &state);
        std::wstring text;
        for (SHORT line = 0; line < state.dwCursorPosition.Y; ++line) {
            wchar_t row[width];
            DWORD count = 0;
            ReadConsoleOutputCharacterW(screen_, row, width, {0, line}, &count);
            while (count > 0 && row[count - 1] == L' ')
                --count;
            text.append(row, count).append(L"\n");
        }
        return text;
    }

  private:
    static constexpr SHORT width = 200;
    static constexpr SHORT height = 100;

    static HANDLE open(const char* name) {
        SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        return CreateFileA(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                           &inheritable, OPEN_EXISTING, 0, nullptr);
    }

    HANDLE keyboard_ = nullptr;
    HANDLE screen_ = nullptr;
};

// Gives whether the program could be started.
bool run(wchar_t* command, DWORD& exitValue) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION child{};
    if (!CreateProcessW(nullptr, command, nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &child))
        return false;
    WaitForSingleObject(child.hProcess, INFINITE);
    return GetExitCodeProcess(child.hProcess, &exitValue) != 0;
}

bool runOnConsole(wchar_t* command, DWORD& exitValue) {
    const std::wstring typed = standardInput();
    const Console console;
    console.becomeStandard();
    console.type(typed);
    const bool started = run(command, exitValue);
    for (DWORD ids[2]; GetConsoleProcessList(ids, 2) > 1;)
        Sleep(10);
    std::fputs(narrow(console.shown()).c_str(), stdout);
    return started;
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 3)
        return 2;
    wchar_t* const command = behindWord(behindWord(GetCommandLineW()));
    const bool console = std::strcmp(arguments[2], "--console") == 0;
    DWORD exitValue = 0;
    if (!(console ? runOnConsole(behindWord(command), exitValue) : run(command, exitValue)))
        return 3;
    std::FILE* const file = std::fopen(arguments[1], "w");
    if (file == nullptr)
        return 4;
    std::fprintf(file, "%ld", static_cast<long>(exitValue));
    return std::fclose(file);
}
