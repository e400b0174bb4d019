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
