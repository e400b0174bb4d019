// Command lines for children: their limits, and what is to be minded in them.
#include <cstring>
#include <memory>

#include "platform/Platform.h"

namespace corvane {

namespace {

constexpr int longestCommandLine = 32766;  // in UTF-16, without the terminator

// Frees what CommandLineToArgvW has made.
struct ArgumentsPolicy : NullIsNone<WCHAR**> {
    static void close(Value arguments) noexcept { LocalFree(arguments); }
};

std::unique_ptr<WCHAR[]> wideText(const char* text) {
    const int size = MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    auto wide = std::make_unique<WCHAR[]>(static_cast<std::size_t>(size) + 1);
    MultiByteToWideChar(CP_ACP, 0, text, -1, wide.get(), size);
    return wide;
}

// The page that programs have that don't ask for another.
UINT systemCodePage() {
    DWORD page = 0;
    GetLocaleInfoA(LOCALE_SYSTEM_DEFAULT, LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                   reinterpret_cast<char*>(&page), sizeof page);
    return page == 0 ? CP_ACP : page;
}

std::unique_ptr<char[]> textIn(UINT page, const WCHAR* wide) {
    const int size = WideCharToMultiByte(page, 0, wide, -1, nullptr, 0, nullptr, nullptr);
    auto text = std::make_unique<char[]>(static_cast<std::size_t>(size) + 1);
    WideCharToMultiByte(page, 0, wide, -1, text.get(), size, nullptr, nullptr);
    return text;
}

}  // namespace

bool commandLineFits(const char* commandLine) {
    return MultiByteToWideChar(CP_ACP, 0, commandLine, -1, nullptr, 0) <= longestCommandLine + 1;
}

void forEachFileArgument(const char* commandLine, TextTaker take) {
    int count = 0;
    const Guard<ArgumentsPolicy> arguments(CommandLineToArgvW(wideText(commandLine).get(), &count));
    for (int i = 1; i < count; ++i)
        take(textIn(systemCodePage(), arguments.get()[i]).get());
}

DWORD batchProcessor(LPSTR buffer, DWORD size) {
    constexpr const char rest[] = "\\cmd.exe\" /d /c ";
    char directory[MAX_PATH] = "";
    const UINT length = GetSystemDirectoryA(directory, sizeof directory);
    if (length == 0 || length + 1 + sizeof rest > size)
        return 0;
    buffer[0] = '"';
    std::memcpy(buffer + 1, directory, length);
    std::memcpy(buffer + 1 + length, rest, sizeof rest);
    return static_cast<DWORD>(length + sizeof rest);
}

}  // namespace corvane
