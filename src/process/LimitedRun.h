// `runLimited`: a child that has so much time and no more.
#pragma once

#include <cstdint>

#include "foundation/String.h"

namespace corvane {

struct LimitedRun {
    enum class End {
        byItself,
        notStarted,  // `failure` has the system's words
        outOfTime,
        tooMuchOutput,  // more than 1 MB
        canceled,
    };

    End end = End::byItself;
    String failure;
};

// Runs a command line without console and window, and appends what it writes to the two texts. When
// it takes longer than `milliseconds`, writes too much or the run is canceled, it is ended at once;
// and with its end goes all that it has started. Its end is waited for, not polled. Raises
// `LauncherException` when a pipe can't be read.
LimitedRun runLimited(const String& commandLine, const String& workingDirectory,
                      std::uint64_t milliseconds, String& stdOut, String& errOut);

}  // namespace corvane
