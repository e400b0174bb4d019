// Our own operations on Windows, where its own library does all the work.
#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <iterator>
#include <string_view>

#include "platform/Platform.h"

namespace corvane {

std::FILE* openStream(const char* path, const char* mode) {
    return std::fopen(path, mode);
}

// The library says ENOSPC also of a write that wrote too little, for which the system has no code.
StreamError lastStreamError() {
    const int number = errno;
    return {number, number == ENOSPC ? ERROR_DISK_FULL : static_cast<unsigned>(_doserrno)};
}

// Windows knows a program by its name.
bool makeExecutable(const char* /*path*/) {
    return true;
}

bool makeLink(const char* /*target*/, const char* /*path*/) {
    SetLastError(ERROR_NOT_SUPPORTED);
    return false;
}

DWORD finalPath(const char* path, LPSTR buffer, DWORD size) {
    constexpr DWORD anybodyMay = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const FileGuard file(CreateFileA(path, 0, anybodyMay, nullptr, OPEN_EXISTING,
                                     FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    const DWORD length = file ? GetFinalPathNameByHandleA(file.get(), buffer, size, 0) : 0;
    return length < size ? length : 0;
}

void restrictLibraryLoading() {
    using Restrict = BOOL(WINAPI*)(DWORD);
    void* const found = reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleA("kernel32.dll"), "SetDefaultDllDirectories"));
    if (found != nullptr)
        reinterpret_cast<Restrict>(found)(LOAD_LIBRARY_SEARCH_SYSTEM32);
}

void forEachPlatformJvmPath(TextTaker /*take*/) {}

void divideBySemicolons(char* /*paths*/) {}

namespace {

// The version itself, not the one that the program's manifest allows it to see.
OSVERSIONINFOW systemVersion() {
    using GetVersion = LONG(WINAPI*)(OSVERSIONINFOW*);
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    void* const found =
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("ntdll.dll"), "RtlGetVersion"));
    if (found != nullptr)
        reinterpret_cast<GetVersion>(found)(&version);
    return version;
}

void writeVersion(char* text, char* end) {
    const OSVERSIONINFOW version = systemVersion();
    constexpr std::string_view name = "Windows";
    text = std::copy(name.begin(), name.end(), text);
    char before = ' ';
    for (const DWORD number :
         {version.dwMajorVersion, version.dwMinorVersion, version.dwBuildNumber}) {
        *text++ = before;
        text = std::to_chars(text, end, number).ptr;
        before = '.';
    }
}

// Language and country, as in "de-DE".
void writeLocale(char* text, int size) {
    const int language = GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SISO639LANGNAME, text, size);
    if (language == 0)
        return;
    text[language - 1] = '-';
    GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SISO3166CTRYNAME, text + language, size - language);
}

}  // namespace

SystemFacts systemFacts() {
    SystemFacts facts{};
    writeVersion(facts.system, std::end(facts.system) - 1);
    writeLocale(facts.locale, sizeof facts.locale);
    facts.codePage = GetACP();
    facts.consoleCodePage = GetConsoleOutputCP();
    return facts;
}

}  // namespace corvane
