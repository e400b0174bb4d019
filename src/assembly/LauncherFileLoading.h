// The loading of a launcher file: the objects that are made from the embedded files, and from those
// that an input file names.
#pragma once

#include "launcherfile/LauncherFile.h"

namespace corvane {

// Reads the index of `launcherPath` into `files`, and with `withContents` also the tag-bearing
// files, and makes its objects from them. Looks for the trailer where `RunContext.trailerOffset`
// says; without one the index is empty. Once it has run, a further call does nothing. Raises
// `LauncherException`, which names the index in front of the reason.
void loadLauncherFile(LauncherFile& files, bool withContents);

// Makes objects from the files that an input file names; they take the place of embedded ones in a
// `loadLauncherFile` behind this. Raises `LauncherException`.
void loadFromInputFile(LauncherFile& files, const TagFile& tags);

}  // namespace corvane
