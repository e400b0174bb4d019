// The path of the program, and paths as plain text: but for `absolutePath`, nothing is
// normalised, and case is kept.
#pragma once

#include <string_view>

#include "foundation/String.h"

namespace corvane {

// The file of the running program, however long its path is.
String modulePath();

// `path` behind the current drive and directory, unless it names both a drive and the way from its
// root; as it is when the system can't tell.
String absolutePath(const String& path);

// Where `path` leads to with all links resolved, for comparisons; empty if that can't be told.
String resolvedPath(const String& path);

// Whether anything lies there.
bool exists(const String& path);

// The short name of what lies at `path`, if it has one of the usual length, else `path`.
String shortPath(const String& path);

// `path` in front of its last backslash; empty without one.
String parentDirectory(const String& path);

// Directory of the launcher that the user started (`originalLauncherPath`): what stands in front of
// its last slash or backslash; empty without one.
String launcherDirectory();

// Path of a companion file beside that launcher: its extension, if it has one behind a separator,
// is replaced by `extension` (such as ".sp"), otherwise `extension` is appended.
String companionFile(const char* extension);

// What follows the last slash or backslash of `path`, or all of it.
String lastPathComponent(const String& path);

// Whether two paths are the same text when case is ignored.
bool samePath(std::string_view a, std::string_view b) noexcept;

// Whether `path` begins with `prefix` when case is ignored.
bool pathBeginsWith(std::string_view path, std::string_view prefix) noexcept;

}  // namespace corvane
