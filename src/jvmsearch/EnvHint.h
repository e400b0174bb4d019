// Environment hints: places that environment variables name.
#pragma once

#include "foundation/String.h"
#include "foundation/StringList.h"
#include "jvmsearch/PlaceTree.h"

namespace corvane {

// Appends the places of `hint`, a list with semicolons of paths with %VARIABLES% in them, each of
// which may itself be a list. A path with a variable that has no value gives nothing, nor does one
// that isn't absolute; one with `*` gives the directories that it stands for.
void resolveEnvHint(const String& hint, DirectoryTree& tree, StringList& places);

// The text with the values of its %VARIABLES%; empty if one has none. A percent sign alone stands
// for itself.
String withVariables(const String& text);

// Whether a path begins at a root or a drive. A relative path would lead to what lies in the
// directory that the user happens to be in.
bool isAbsolute(const String& path) noexcept;

}  // namespace corvane
