// Starting of child processes, and reading of their pipes.
#include "process/ChildStart.h"

#include <cstring>

#include "base/Messages.h"
#include "base/Ui.h"
#include "foundation/Exceptions.h"

namespace corvane {

namespace {

constexpr DWORD readSize = 4096;
constexpr DWORD bufferSize = readSize + 2;

struct Pipe {
    HandleGuard readEnd;
    HandleGuard writeEnd;
};

Pipe createPipe(SECURITY_ATTRIBUTES& attributes) {
    Pipe pipe;
    if (!CreatePipe(pipe.readEnd.put(), pipe.writeEnd.put(), &attributes, 0))
        throwSystemError("", GetLastError());
    return pipe;
}

// Starts a child. With `inherited`, it gets the handles of `startup`.
Child createProcess(String commandLine, const String& workingDirectory, DWORD flags,
                    STARTUPINFOA& startup, SECURITY_ATTRIBUTES* inherited) {
    if (endRequests() > 0)
        throw LauncherException(loadMessage(MessageId::canceled));
    PROCESS_INFORMATION information{};
    if (!CreateProcessA(nullptr, commandLine.empty() ? nullptr : commandLine.mutableAt(0),
                        inherited, inherited, inherited != nullptr, flags, nullptr,
                        workingDirectory.empty() ? nullptr : workingDirectory.cstr(), &startup,
                        &information))
        throwSystemError("CreateProcess failed  ==>  ", GetLastError(), programOf(commandLine));
    return {HandleGuard(information.hProcess), HandleGuard(information.hThread), information,
            (flags & DETACHED_PROCESS) != 0};
}

}  // namespace

DWORD creationFlags(bool showConsole, bool newConsole) {
    return (showConsole ? 0 : CREATE_NO_WINDOW | DETACHED_PROCESS) |
           (newConsole ? CREATE_NEW_CONSOLE : 0);
}

String programOf(const String& commandLine) {
    const bool quoted = *commandLine.cstr() == '"';
    const std::size_t start = quoted ? 1 : 0;
    const std::size_t end = commandLine.find(quoted ? '"' : ' ', start);
    return commandLine.substr(start, end == String::npos ? end : end - start);
}

Child startChild(const String& commandLine, const String& workingDirectory, DWORD flags) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    return createProcess(commandLine, workingDirectory, flags, startup, nullptr);
}

PipedChild startPipedChild(const String& commandLine, const String& workingDirectory, DWORD flags) {
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
    // The launcher's own writing ends close behind the start, so that the child's are the last.
    return {createProcess(commandLine, workingDirectory, flags, startup, &inheritable),
            std::move(out.readEnd), std::move(err.readEnd)};
}

DWORD exitCodeOf(const Child& child) {
    DWORD exitCode = 0;
    if (!GetExitCodeProcess(child.process.get(), &exitCode))
        throwSystemError("CreateProcess unable to get exit code for process ==> ", GetLastError());
    return exitCode;
}

DWORD readPipe(CollectedOutput& collector, HANDLE pipe) {
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

}  // namespace corvane
