// The path of the program, and paths as plain text.
#include "host/Paths.h"

#include <algorithm>

#include "base/RunContext.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

constexpr const char* anySeparator = "/\\";

char lowered(char character) noexcept {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

bool isSeparator(char character) noexcept {
    return character == '/' || character == '\\';
}

}  // namespace

String modulePath() {
    // A path that fills the buffer was cut.
    for (DWORD size = MAX_PATH;; size *= 2) {
        String buffer(std::size_t{size}, '\0');
        const DWORD length = GetModuleFileNameA(nullptr, buffer.mutableAt(0), size);
        if (length < size)
            return buffer.substr(0, length);
    }
}

String absolutePath(const String& path) {
    const std::string_view text = path.view();
    const bool hasDrive = text.length() > 2 && text[1] == ':' && isSeparator(text[2]);
    const bool hasServer = text.length() > 1 && isSeparator(text[0]) && isSeparator(text[1]);
    const DWORD size =
        hasDrive || hasServer ? 0 : GetFullPathNameA(path.cstr(), 0, nullptr, nullptr);
    if (size == 0)
        return path;
    String full(size, '\0');
    return full.substr(0, GetFullPathNameA(path.cstr(), size, full.mutableAt(0), nullptr));
}

String resolvedPath(const String& path) {
    constexpr DWORD longest = 32768;
    String resolved(std::size_t{longest}, '\0');
    return resolved.substr(0, finalPath(path.cstr(), resolved.mutableAt(0), longest));
}

bool exists(const String& path) {
    return GetFileAttributesA(path.cstr()) != INVALID_FILE_ATTRIBUTES;
}

String shortPath(const String& path) {
    char name[MAX_PATH] = "";
    const DWORD length = GetShortPathNameA(path.cstr(), name, sizeof name);
    return length == 0 || length >= sizeof name ? path : name;
}

String parentDirectory(const String& path) {
    const std::size_t separator = path.rfind('\\');
    return separator == String::npos ? String() : path.substr(0, separator);
}

String launcherDirectory() {
    const String& path = runContext().originalLauncherPath;
    const std::size_t separator = path.findLastOf(anySeparator);
    return separator == String::npos ? String() : path.substr(0, separator);
}

String companionFile(const char* extension) {
    String path = runContext().originalLauncherPath;
    const std::size_t separator = path.findLastOf(anySeparator);
    const std::size_t dot = path.rfind('.');
    if (separator != String::npos && dot != String::npos && dot > separator)
        path.erase(dot);
    return path.append(extension);
}

String lastPathComponent(const String& path) {
    const std::size_t separator = path.findLastOf(anySeparator);
    return separator == String::npos ? path : path.substr(separator + 1);
}

bool samePath(std::string_view a, std::string_view b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowered(x) == lowered(y); });
}

bool pathBeginsWith(std::string_view path, std::string_view prefix) noexcept {
    return path.length() >= prefix.length() && samePath({path.data(), prefix.length()}, prefix);
}

}  // namespace corvane
