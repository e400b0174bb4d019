// Windows paths to host paths and back, through the drive table.
#pragma once

#include <optional>
#include <string>

namespace corvane::hosted {

inline bool isDriveLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
inline char upperLetter(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

// `root` and the components of `rest`, joined by single slashes, with "." and ".." resolved as
// text; separators of `rest` are slashes and backslashes, and no ".." leads out of `root`. At least
// "/".
std::string normalPath(const std::string& root, const std::string& rest);

// The host's path for a path as callers give it: X:\a, \a on the current drive, a relative to the
// current directory, or an absolute host path. None, with error 3 as the last error, for the empty
// path, null and a drive that isn't mapped.
std::optional<std::string> hostPath(const char* path);

// A relative host path put behind the current directory; an absolute one as it is.
std::string absoluteHostPath(const std::string& path);

// The Windows path of an absolute host path, through the drive of the system whose directory is its
// longest prefix, else through Z:.
std::string windowsPath(const std::string& path);

// The current directory, on the host and as its drive's letter.
std::string currentHostDirectory();
char currentDriveLetter();

}  // namespace corvane::hosted
