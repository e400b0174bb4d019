// Starting of child processes, and the polling of their pipes.
#include "process/ProcessRunner.h"

#include <cstring>

#include "base/Messages.h"
#include "base/Ui.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

constexpr int pollSleepMs = 100;
constexpr DWORD finalSleepMs = 500;
constexpr DWORD readSize = 4096;
constexpr DWORD bufferSize = readSize + 2;

struct Pipe {
    HandleGuard readEnd;
    HandleGuard writeEnd;
};

struct Child {
    HandleGuard process;
    HandleGuard thread;
    PROCESS_INFORMATION information;
    bool detached;
};

DWORD creationFlags(bool showConsole, bool newConsole) {
    return (showConsole ? 0 : CREATE_NO_WINDOW | DETACHED_PROCESS) |
           (newConsole ? CREATE_NEW_CONSOLE : 0);
}

Pipe createPipe(SECURITY_ATTRIBUTES& attributes) {
    Pipe pipe;
    if (!CreatePipe(pipe.readEnd.put(), pipe.writeEnd.put(), &attributes, 0))
        throwSystemError("", GetLastError());
    return pipe;
}

// The program that a command line starts, as it stands there.
String programOf(const String& commandLine) {
    const bool quoted = *commandLine.cstr() == '"';
    const std::size_t start = quoted ? 1 : 0;
    const std::size_t end = commandLine.find(quoted ? '"' : ' ', start);
    return commandLine.substr(start, end == String::npos ? end : end - start);
}

// Starts a child. With `inherited`, it gets the handles of `startup`.
Child createProcess(String commandLine, const String& workingDirectory, DWORD flags,
                    STARTUPINFOA& startup, SECURITY_ATTRIBUTES* inherited) {
    if (endRequests() > 0)
        throw LauncherException(loadMessage(MessageId::canceled));
    PROCESS_INFORMATION information{};
    // What the launcher wrote so far comes in front of what a child with the same output writes.
    std::fflush(stdout);
    if (!CreateProcessA(nullptr, commandLine.empty() ? nullptr : commandLine.mutableAt(0),
                        inherited, inherited, inherited != nullptr, flags, nullptr,
                        workingDirectory.empty() ? nullptr : workingDirectory.cstr(), &startup,
                        &information))
        throwSystemError("CreateProcess failed  ==>  ", GetLastError(), programOf(commandLine));
    return {HandleGuard(information.hProcess), HandleGuard(information.hThread), information,
            (flags & DETACHED_PROCESS) != 0};
}

DWORD exitCodeOf(const Child& child) {
    DWORD exitCode = 0;
    if (!GetExitCodeProcess(child.process.get(), &exitCode))
        throwSystemError("CreateProcess unable to get exit code for process ==> ", GetLastError());
    return exitCode;
}

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
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    const Child child = createProcess(commandLine_, workingDirectory_,
                                      creationFlags(showConsole, newConsole), startup, nullptr);
    if (!waitForCompletion_)
        return 0;
    awaitEnd(child);
    return exitCodeOf(child);
}

std::uint32_t ProcessRunner::runPiped(bool showConsole, bool newConsole) {
    SECURITY_ATTRIBUTES inheritable{};
    inheritable.nLength = sizeof inheritable;
    inheritable.bInheritHandle = TRUE;
    Pipe out = createPipe(inheritable);
    Pipe err = createPipe(inheritable);
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput = out.writeEnd.get();
    startup.hStdError = err.writeEnd.get();
    Child child = createProcess(commandLine_, workingDirectory_,
                                creationFlags(showConsole, newConsole), startup, &inheritable);
    // From here on the end of the child breaks the pipes.
    out.writeEnd.reset();
    err.writeEnd.reset();

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
            outRead = readPipe(stdOut.output, out.readEnd.get());
        if (errOutCollector_ != nullptr)
            errRead = readPipe(errOut.output, err.readEnd.get());
    } while (running || outRead != 0 || errRead != 0);
    child.thread.reset();
    child.process.reset();
    Sleep(finalSleepMs);
    return exitCode;
}

// Takes what is there, up to one block; gives the number of bytes, 0 for a broken pipe, too.
std::uint32_t ProcessRunner::readPipe(CollectedOutput& collector, void* pipe) {
    DWORD available = 0;
    if (!PeekNamedPipe(pipe, nullptr, 0, nullptr, &available, nullptr)) {
        const DWORD code = GetLastError();
        if (code != ERROR_BROKEN_PIPE)
            throwSystemError("PeekNamedPipe failed  ==>  ", code);
        return 0;
    }
    if (available == 0)
        return 0;
    char buffer[bufferSize];
    DWORD read = 0;
    if (ReadFile(pipe, buffer, readSize, &read, nullptr)) {
        // A text ends at its first NUL; the rest of the block is dropped.
        buffer[read] = '\0';
        collector.add(buffer, std::strlen(buffer));
    } else {
        const DWORD code = GetLastError();
        if (code != ERROR_BROKEN_PIPE)
            throwSystemError("ReadFile failed  ==>  ", code);
        read = 0;
    }
    uiStepProgress(1);
    return read;
}

std::uint32_t runCommand(const String& commandLine, const String& workingDirectory,
                         const ProcessOptions& options, String* stdOut, String* errOut) {
    ProcessRunner runner(commandLine, workingDirectory, options.waitForCompletion, stdOut, errOut);
    return options.collect ? runner.runPiped(options.showConsole, options.newConsole)
                           : runner.runPlain(options.showConsole, options.newConsole);
}

}  // namespace corvane
