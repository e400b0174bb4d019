// Command lines and string tables, without SHELL32 and USER32.
#include <cwchar>

#include "platform/ArgumentReader.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

// The strings of a table come in blocks of sixteen.
constexpr UINT blockOfStrings = 16;

// Texts with their length in front. Null if there is no such string.
const WCHAR* findString(HMODULE module, UINT id) {
    const HRSRC found = FindResourceA(module, MAKEINTRESOURCEA(id / blockOfStrings + 1),
                                      reinterpret_cast<LPCSTR>(RT_STRING));
    const HGLOBAL loaded = found == nullptr ? nullptr : LoadResource(module, found);
    auto* text = static_cast<const WCHAR*>(loaded == nullptr ? nullptr : LockResource(loaded));
    for (UINT i = 0; text != nullptr && i < id % blockOfStrings; ++i)
        text += 1 + *text;
    return text;
}

}  // namespace

LPWSTR* CommandLineToArgvW(LPCWSTR commandLine, int* count) {
    // No argument is longer than its place in the line, nor are there more of them than every other
    // character and the program's name.
    const std::size_t length = std::wcslen(commandLine);
    const std::size_t most = length / 2 + 2;
    auto* const arguments = static_cast<LPWSTR*>(
        LocalAlloc(LMEM_FIXED, most * sizeof(LPWSTR) + (length + 2) * sizeof(WCHAR)));
    if (arguments == nullptr)
        return nullptr;
    auto* text = reinterpret_cast<LPWSTR>(arguments + most);
    const auto put = [&text](WCHAR c) { *text++ = c; };
    const WCHAR* const end = commandLine + length;
    const WCHAR* at = skipProgramName(commandLine, end);
    int found = 0;
    arguments[found++] = text;
    for (const WCHAR* c = commandLine; c != at; ++c) {
        if (*c != '"')
            put(*c);
    }
    put(L'\0');
    for (at = skipBlanks(at, end); at != end; at = skipBlanks(at, end)) {
        arguments[found++] = text;
        at = readArgument(at, end, QuotePair::endsQuoting, put);
        put(L'\0');
    }
    *count = found;
    return arguments;
}

int LoadStringA(void* module, UINT id, LPSTR buffer, int size) {
    const WCHAR* text = size > 0 ? findString(static_cast<HMODULE>(module), id) : nullptr;
    int length = 0;
    // By characters, so that a text that is too long ends with a whole one.
    for (int left = text == nullptr ? 0 : *text++; left > 0;) {
        const int units = left > 1 && IS_HIGH_SURROGATE(*text) ? 2 : 1;
        const int bytes = WideCharToMultiByte(CP_ACP, 0, text, units, buffer + length,
                                              size - 1 - length, nullptr, nullptr);
        if (bytes == 0 || length + 1 == size)
            break;
        length += bytes;
        text += units;
        left -= units;
    }
    if (size > 0)
        buffer[length] = '\0';
    return length;
}

}  // namespace corvane
