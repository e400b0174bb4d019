// `runCommand`, the one way in which the launcher starts another process.
#pragma once

#include <cstdint>

#include "foundation/String.h"
#include "process/CollectedOutput.h"

namespace corvane {

// How a child is run.
struct ProcessOptions {
    bool showConsole = false;       // false: no console and no window
    bool collect = false;           // capture its streams and wait for its end
    bool waitForCompletion = true;  // for a child that isn't collected
    bool newConsole = false;        // a console of its own
    bool question = false;          // of a candidate, so that it is no start of a run
};

// One run of a child process, on the stack of its caller.
class ProcessRunner {
  public:
    // The first word of `commandLine` is the program. An empty `workingDirectory` is the
    // launcher's own. The collectors are the caller's, may be null, and are appended to.
    ProcessRunner(const String& commandLine, const String& workingDirectory, bool waitForCompletion,
                  String* stdOutCollector, String* errOutCollector);
    virtual ~ProcessRunner() = default;

    // Both give the child's exit code (0 if nobody waits) and raise `LauncherException` with the
    // system's words. A request to end the run reaches a child that is waited for, too, and behind
    // one no child is started: that raises the "canceled" message.

    // Without pipes.
    std::uint32_t runPlain(bool showConsole, bool newConsole);

    // Captures both streams while the child runs, by polling them from this thread, and always
    // waits. What a grandchild still writes behind the child's end isn't waited for. The progress
    // display ticks with each piece that arrives.
    std::uint32_t runPiped(bool showConsole, bool newConsole);

  private:
    String commandLine_;
    bool waitForCompletion_;
    String workingDirectory_;
    String* stdOutCollector_;
    String* errOutCollector_;
};

// Runs `commandLine` as `options` say; the rest as above. A run that is only played starts nothing
// but questions, and gives 0.
std::uint32_t runCommand(const String& commandLine, const String& workingDirectory,
                         const ProcessOptions& options, String* stdOut = nullptr,
                         String* errOut = nullptr);

}  // namespace corvane
