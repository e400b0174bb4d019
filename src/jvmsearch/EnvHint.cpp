// Reading of environment hints.
#include "jvmsearch/EnvHint.h"

#include <algorithm>

#include "foundation/TextLines.h"
#include "host/Environment.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

// Calls `take` with each text between the semicolons.
template <class Take>
void forEachItem(const String& list, Take take) {
    for (std::size_t start = 0; start <= list.length();) {
        const std::size_t end = std::min(list.find(';', start), list.length());
        take(list.substr(start, end - start));
        start = end + 1;
    }
}

void addPlace(String path, DirectoryTree& tree, StringList& places) {
    trim(path, " \t\"");  // PATH may have quotes
    if (!isAbsolute(path))
        return;
    if (path.find(wildcard) == String::npos)
        places.add(path);
    else
        tree.expand(String(), path, places);
}

}  // namespace

String withVariables(const String& text) {
    String filled;
    for (std::size_t pos = 0;;) {
        const std::size_t open = text.find('%', pos);
        const std::size_t close = open == String::npos ? open : text.find('%', open + 1);
        if (close == String::npos)
            return filled.append(text, pos, String::npos);
        const String value = getEnvironmentValue(text.substr(open + 1, close - open - 1));
        if (value.empty())
            return {};
        filled.append(text, pos, open - pos).append(value);
        pos = close + 1;
    }
}

bool isAbsolute(const String& path) noexcept {
    const auto isSeparator = [&](std::size_t i) {
        return i < path.length() && (*path.charAt(i) == '\\' || *path.charAt(i) == '/');
    };
    return isSeparator(0) || (path.length() > 1 && *path.charAt(1) == ':' && isSeparator(2));
}

void resolveEnvHint(const String& hint, DirectoryTree& tree, StringList& places) {
    forEachItem(hint, [&](const String& item) {
        String paths = withVariables(item);
        divideBySemicolons(paths.mutableAt(0));
        forEachItem(paths, [&](const String& path) { addPlace(path, tree, places); });
    });
}

}  // namespace corvane
