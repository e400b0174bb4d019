// The names that an archive may hold.
#include "unpacker/ArchiveNames.h"

#include <algorithm>
#include <iterator>

namespace corvane {

namespace {

constexpr std::string_view up = "../";

bool isForbidden(char c) noexcept {
    return c < ' ' || c > '~' || std::string_view("\\:*?\"<>|").find(c) != std::string_view::npos;
}

char lower(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

// Whether Windows takes the name for a device, in any directory and with any extension.
bool isDevice(std::string_view part) noexcept {
    part = part.substr(0, part.find('.'));
    part = part.substr(0, part.find_last_not_of(' ') + 1);
    char stem[8] = "";
    if (part.size() >= sizeof stem)
        return false;
    std::transform(part.begin(), part.end(), stem, lower);
    std::string_view word(stem, part.size());
    if (word.size() == 4 && word[3] >= '0' && word[3] <= '9')
        return word.starts_with("com") || word.starts_with("lpt");
    constexpr std::string_view devices[] = {"con", "prn", "aux", "nul", "conin$", "conout$"};
    return std::find(std::begin(devices), std::end(devices), word) != std::end(devices);
}

// Windows drops dots and blanks at the end, so "." and ".." are among those.
bool isPart(std::string_view part) noexcept {
    return !part.empty() && part.back() != '.' && part.back() != ' ' &&
           std::none_of(part.begin(), part.end(), isForbidden) && !isDevice(part);
}

}  // namespace

bool isArchiveName(std::string_view name) noexcept {
    if (name.size() > longestArchiveName)
        return false;
    for (;;) {
        const std::size_t slash = name.find('/');
        if (!isPart(name.substr(0, slash)))
            return false;
        if (slash == std::string_view::npos)
            return true;
        name.remove_prefix(slash + 1);
    }
}

bool isArchiveLink(std::string_view name, std::string_view target) noexcept {
    auto depth = std::count(name.begin(), name.end(), '/');
    for (; target.starts_with(up); target.remove_prefix(up.size())) {
        if (depth-- == 0)
            return false;
    }
    return isArchiveName(target);
}

}  // namespace corvane
