// Stands as bin\java.exe under Wine and hands its command line to the host's Java. Wine gives a
// Unix program neither pipe ends nor a process handle, so it is started through a script
// (host_java.py) that leaves both streams and the exit value in files.
#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>

namespace {

constexpr DWORD pollMs = 5;
constexpr int patienceMs = 60000;
constexpr UINT noJava = 97;

std::wstring environmentValue(const wchar_t* name) {
    wchar_t value[4096] = L"";
    GetEnvironmentVariableW(name, value, 4096);
    return value;
}

// The command line behind the program's name, with the blank in front.
std::wstring argumentText() {
    const std::wstring line = GetCommandLineW();
    const std::size_t end = line.find(line[0] == L'"' ? L'"' : L' ', 1);
    return end == std::wstring::npos ? L"" : line.substr(end + (line[0] == L'"'));
}

std::wstring newFile() {
    wchar_t folder[MAX_PATH] = L"";
    wchar_t path[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder);
    GetTempFileNameW(folder, L"JVM", 0, path);
    return path;
}

bool start(std::wstring command) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION child{};
    return CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                          &startup, &child) != 0;
}

bool waitForFile(const std::wstring& path) {
    for (int waited = 0; waited < patienceMs; waited += static_cast<int>(pollMs)) {
        if (GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES)
            return true;
        Sleep(pollMs);
    }
    return false;
}

// Copies a file to a standard stream, if there is one, and removes it.
void drain(const std::wstring& path, DWORD stream) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    char block[65536];
    for (DWORD count = 0; ReadFile(file, block, sizeof block, &count, nullptr) && count > 0;) {
        DWORD written = 0;
        WriteFile(GetStdHandle(stream), block, count, &written, nullptr);
    }
    CloseHandle(file);
    DeleteFileW(path.c_str());
}

UINT readExitValue(const std::wstring& path) {
    UINT value = noJava;
    if (std::FILE* const file = _wfopen(path.c_str(), L"r")) {
        if (std::fscanf(file, "%u", &value) != 1)
            value = noJava;
        std::fclose(file);
    }
    DeleteFileW(path.c_str());
    return value;
}

}  // namespace

int main() {
    const std::wstring file = newFile();
    if (!start(environmentValue(L"CORVANE_HOST_JAVA") + L" \"" + file + L"\"" + argumentText()) ||
        !waitForFile(file + L".exit"))
        return noJava;
    drain(file + L".out", STD_OUTPUT_HANDLE);
    drain(file + L".err", STD_ERROR_HANDLE);
    DeleteFileW(file.c_str());
    return static_cast<int>(readExitValue(file + L".exit"));
}
