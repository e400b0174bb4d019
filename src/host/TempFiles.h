// Temporary directories and files, registered the moment they are made, and their removal when the
// run ends, however it ends. A cleanup on one thread and the other operations on another don't
// disturb each other.
#pragma once

#include "foundation/String.h"

namespace corvane {

// The directory under which temporary things are made, absolute: `-cv:tempdir`, else the system's;
// by its short name, if it has one, when a semicolon would divide it in a class path.
// Raises a `LauncherException` when it isn't an existing directory.
String getTempRoot();

// A new directory, without a trailing separator, or a new empty file; both are removed at exit.
// Raise `LauncherException`. While the system denies access, the directory is tried for 10 seconds,
// since a scanner may hold a name that was just freed.
String createTempDirectory();
String createTempFile();

// Has the cleanup at exit remove a file, too.
void removeAtExit(const String& file);

// Take a path off the list of what is removed at exit; the file or directory stays. Case is
// ignored, and an unknown path does nothing.
void forgetTempFile(const String& path);
void forgetTempDirectory(const String& path);

// Removes a file or an empty directory, read-only or not. A failure is a warning in the log.
bool deleteFileOrDirectory(const String& path);

// Removes a file, or a directory with all that lies under it, as far as it can be removed. A link
// to a directory is removed itself, and what it leads to stays as it is.
void removeTree(const String& path);

// The same, tried again for about a minute as long as something is held open; what stays then is
// named in a warning.
void removeTreePatiently(const String& path);

// Removes what is registered, directories first, the newest first, and then, in the child of
// another launcher, the copy of the program that runs from a temporary directory. What something
// still holds open is tried again for about a minute in all, but not while the session ends,
// and no longer once the user asks for the end; what stays then is named in a warning.
void cleanupAtExit();

}  // namespace corvane
