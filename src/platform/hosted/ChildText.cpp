// Mapped paths inside longer texts.
#include "platform/hosted/ChildText.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <filesystem>

#include "platform/hosted/DriveTable.h"
#include "platform/hosted/Paths.h"

namespace corvane::hosted {

namespace {

// Letters of other alphabets count too: all bytes of UTF-8 beyond ASCII.
bool bindsToLetter(char c) {
    return isDriveLetter(c) || (c >= '0' && c <= '9') || c == '/' || c == '\\' ||
           static_cast<unsigned char>(c) >= 0x80;
}

// A backslash, or a slash that isn't the first of two.
bool isSeparator(const std::string& text, std::size_t pos) {
    if (pos >= text.size() || text[pos] != '/') {
        return pos < text.size() && text[pos] == '\\';
    }
    return pos + 1 == text.size() || text[pos + 1] != '/';
}

// The drive of the mapped path that starts at `pos`, or null.
const Drive* pathStart(const std::string& text, std::size_t pos) {
    const bool shaped = isDriveLetter(text[pos]) && pos + 1 < text.size() && text[pos + 1] == ':' &&
                        isSeparator(text, pos + 2) && (pos == 0 || !bindsToLetter(text[pos - 1]));
    return shaped ? mappedDrive(text[pos]) : nullptr;
}

// What no Windows file name can hold, the separator of lists, and first of all the backslash.
constexpr const char* nameEnds = "\\;\":<>|?*";
constexpr const char* pathEnds = nameEnds + 1;

bool endsPath(char c) {
    return std::strchr(pathEnds, c) != nullptr;
}

// Whether a host directory starts at `pos` and goes on behind a backslash at `end`, the first of
// `nameEnds` there: a launcher that was itself given host paths joins them as it does all paths.
bool hostPathStart(const std::string& text, std::size_t pos, std::size_t end) {
    if (text[pos] != '/' || (pos > 0 && bindsToLetter(text[pos - 1])) || text[end] != '\\' ||
        end - pos >= PATH_MAX) {
        return false;
    }
    std::error_code ignored;
    return std::filesystem::is_directory(text.substr(pos, end - pos), ignored);
}

}  // namespace

std::string childText(const std::string& text) {
    std::string result;
    bool found = false;
    bool inPath = false;
    std::size_t nameEnd = 0;  // the first at or behind `pos`; the text may be long
    for (std::size_t pos = 0; pos < text.size(); ++pos) {
        if (nameEnd <= pos) {
            nameEnd = std::min(text.find_first_of(nameEnds, pos), text.size());
        }
        if (const Drive* drive = pathStart(text, pos)) {
            result += drive->directory;
            found = inPath = true;
            ++pos;  // the letter; the loop passes the colon
            continue;
        }
        if (hostPathStart(text, pos, nameEnd)) {
            found = inPath = true;
        }
        // Backslashes behind the end of a path may be anything, and stay.
        inPath = inPath && !endsPath(text[pos]);
        result += inPath && text[pos] == '\\' ? '/' : text[pos];
    }
    // Whoever joins paths by semicolons means a list, and hosts join theirs by colons.
    if (found) {
        std::replace(result.begin(), result.end(), ';', ':');
    }
    return result;
}

}  // namespace corvane::hosted
