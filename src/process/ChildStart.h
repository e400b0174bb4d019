// What every way of running a child has in common: its start, its pipes, its exit code.
#pragma once

#include <cstdint>

#include "foundation/String.h"
#include "platform/Platform.h"
#include "process/CollectedOutput.h"

namespace corvane {

struct Child {
    HandleGuard process;
    HandleGuard thread;
    PROCESS_INFORMATION information;
    bool detached;
};

// A child with the reading ends of the pipes to which it writes; its end breaks them.
struct PipedChild : Child {
    HandleGuard out;
    HandleGuard err;
};

// The flags of a child with or without a console.
DWORD creationFlags(bool showConsole, bool newConsole);

// The program that a command line starts, as it stands there.
String programOf(const String& commandLine);

// Both start a child, in the launcher's own directory if that is empty, and raise
// `LauncherException`: the system's words, or the "canceled" message behind a request to end.
Child startChild(const String& commandLine, const String& workingDirectory, DWORD flags);
PipedChild startPipedChild(const String& commandLine, const String& workingDirectory, DWORD flags);

// 259 while it runs. Raises as above.
DWORD exitCodeOf(const Child& child);

// Takes what is in a pipe, up to one block; gives the number of bytes, 0 for a broken pipe, too.
// The progress display ticks with each piece. Raises as above.
DWORD readPipe(CollectedOutput& collector, HANDLE pipe);

// Collects one stream for a scope, and then appends it to the caller's text, also behind a failure.
struct Collection {
    explicit Collection(String* into) : text(into) {}
    Collection(const Collection&) = delete;
    Collection& operator=(const Collection&) = delete;
    ~Collection() {
        if (text != nullptr)
            output.appendTo(*text);
    }

    CollectedOutput output;
    String* const text;
};

}  // namespace corvane
