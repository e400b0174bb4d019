// Failures of reads and writes by streams of the standard library, as errors that name the file.
#pragma once

#include "foundation/String.h"
#include "platform/Platform.h"

namespace corvane {

// Raises the `LauncherException` of a file that can't be written, with advice for a full disk.
[[noreturn]] void throwWriteFailure(const String& path, const StreamError& error);

// Raises a `LauncherException` when a read of `file` has failed, which looks like its end to the
// reader. To be called when it has come there. `path` is the name for the message.
void checkRead(std::FILE* file, const String& path);

// Closes a file of the caller's that was written to, and raises as `throwWriteFailure` does when a
// write has failed.
void closeWritten(StreamGuard file, const String& path);

}  // namespace corvane
