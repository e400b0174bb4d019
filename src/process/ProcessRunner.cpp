// Running of child processes, and the polling of their pipes.
#include "process/ProcessRunner.h"

#include "base/Messages.h"
#include "base/RunContext.h"
#include "base/Ui.h"
#include "platform/Platform.h"
#include "process/ChildStart.h"

namespace corvane {

namespace {

constexpr int pollSleepMs = 100;
constexpr DWORD finalSleepMs = 500;

// Lets a child take part in the requests to end that reach the launcher. One that shares the
// console may answer them as it likes and is waited for; one that doesn't is asked once, and ended
// when the user asks again. When the end is near, none is given longer than leaves time for the
// cleanup.
class EndRelay {
  public:
    explicit EndRelay(const Child& child) : child_(child) {}

    // To be called every `pollSleepMs`.
    void look() {
        const int requests = endRequests();
        if (requests != passedOn_) {
            requestChildEnd(child_.information, child_.detached);
            if (child_.detached && passedOn_ > 0)
                end();
            passedOn_ = requests;
        }
        if (endIsNear() && --looksLeft_ == 0)
            end();
    }

  private:
    static constexpr int longestGraceMs = 3000;

    void end() { TerminateProcess(child_.process.get(), endRequestValue()); }

    const Child& child_;
    int passedOn_ = 0;
    int looksLeft_ = longestGraceMs / pollSleepMs;
};

// Whether the child still runs; its exit code goes to `exitCode`. The handle is asked first: a
// child may really end with the code that stands for a running one.
bool isRunning(const Child& child, DWORD& exitCode) {
    const bool ended = WaitForSingleObject(child.process.get(), 0) == WAIT_OBJECT_0;
    exitCode = exitCodeOf(child);
    return !ended && exitCode == STILL_ACTIVE;
}

void awaitEnd(const Child& child) {
    EndRelay relay(child);
    DWORD state = WAIT_TIMEOUT;
    while (state == WAIT_TIMEOUT) {
        relay.look();
        state = WaitForSingleObject(child.process.get(), pollSleepMs);
    }
    if (state == WAIT_FAILED)
        throwSystemError("CreateProcess unable to wait for completion ==> ", GetLastError());
}

}  // namespace

ProcessRunner::ProcessRunner(const String& commandLine, const String& workingDirectory,
                             bool waitForCompletion, String* stdOutCollector,
                             String* errOutCollector)
    : commandLine_(commandLine),
      waitForCompletion_(waitForCompletion),
      workingDirectory_(workingDirectory),
      stdOutCollector_(stdOutCollector),
      errOutCollector_(errOutCollector) {}

std::uint32_t ProcessRunner::runPlain(bool showConsole, bool newConsole) {
    // It may write where the launcher does.
    if (showConsole)
        uiEndRow();
    const Child child =
        startChild(commandLine_, workingDirectory_, creationFlags(showConsole, newConsole));
    if (!waitForCompletion_)
        return 0;
    awaitEnd(child);
    return exitCodeOf(child);
}

std::uint32_t ProcessRunner::runPiped(bool showConsole, bool newConsole) {
    PipedChild child =
        startPipedChild(commandLine_, workingDirectory_, creationFlags(showConsole, newConsole));
    Collection stdOut(stdOutCollector_);
    Collection errOut(errOutCollector_);
    EndRelay relay(child);
    DWORD exitCode = STILL_ACTIVE;
    bool running = true;
    DWORD outRead = 0;
    DWORD errRead = 0;
    do {
        if (running && outRead == 0 && errRead == 0) {
            running = isRunning(child, exitCode);
            relay.look();
            Sleep(pollSleepMs);
        }
        if (stdOutCollector_ != nullptr)
            outRead = readPipe(stdOut.output, child.out.get());
        if (errOutCollector_ != nullptr)
            errRead = readPipe(errOut.output, child.err.get());
    } while (running || outRead != 0 || errRead != 0);
    child.thread.reset();
    child.process.reset();
    Sleep(finalSleepMs);
    return exitCode;
}

std::uint32_t runCommand(const String& commandLine, const String& workingDirectory,
                         const ProcessOptions& options, String* stdOut, String* errOut) {
    if (const auto playStart = options.question ? nullptr : runContext().playStart) {
        playStart(commandLine, workingDirectory);
        return 0;
    }
    ProcessRunner runner(commandLine, workingDirectory, options.waitForCompletion, stdOut, errOut);
    return options.collect ? runner.runPiped(options.showConsole, options.newConsole)
                           : runner.runPlain(options.showConsole, options.newConsole);
}

}  // namespace corvane
