// Text files with one item a line, which may lie beside the launcher or be named by an option.
#pragma once

#include "base/FileErrors.h"
#include "foundation/String.h"
#include "foundation/TextLines.h"
#include "platform/Platform.h"

namespace corvane {

// Calls `take` for each line of the file, trimmed. False, and no call, if it can't be opened.
// Raises `LauncherException` when it can't be read to its end.
template <class Take>
bool forEachLine(const String& path, Take take) {
    const StreamGuard file(openStream(path.cstr(), "r"));
    while (file && !atEnd(file.get())) {
        String line;
        readLine(file.get(), line);
        take(line);
    }
    if (file)
        checkRead(file.get(), path);
    return static_cast<bool>(file);
}

}  // namespace corvane
