// Windows' operations on processes and threads, over ChildProcess.
#include <strings.h>
#include <unistd.h>

#include <cstring>
#include <ctime>

#include "platform/Platform.h"
#include "platform/hosted/Batch.h"
#include "platform/hosted/ChildProcess.h"
#include "platform/hosted/ChildText.h"
#include "platform/hosted/CommandLine.h"
#include "platform/hosted/Environment.h"
#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/Paths.h"
#include "platform/hosted/ProcessOperations.h"
#include "platform/hosted/ProgramSearch.h"

using namespace corvane::hosted;

namespace {

// The name decides, as on Windows.
bool isBatch(const std::string& path) {
    return path.size() >= 4 && strcasecmp(path.c_str() + path.size() - 4, ".bat") == 0;
}

// A batch file runs apart from the launcher, which it outlives.
bool prepareBatch(const std::string& path, StartRequest& request) {
    const auto text = readHostFile(path);
    if (!text) {
        return failWithErrno();
    }
    const auto script = translateBatch(*text);
    if (!script) {
        return fail(ERROR_BAD_EXE_FORMAT);
    }
    request.program = "/bin/sh";
    request.arguments = {"sh", "-c", *script};
    request.streams = {-1, -1, -1};
    request.ownSession = true;
    return true;
}

// Fills in program and arguments; false with the last error. The arguments are what Windows' C
// runtime would make of the rest of the line, each in the form for a host program.
bool prepareProgram(const std::string& commandLine, StartRequest& request) {
    const auto program = findProgram(commandLine);
    if (!program) {
        return false;
    }
    if (isBatch(program->path)) {
        return prepareBatch(program->path, request);
    }
    request.program = program->path;
    request.arguments = {program->path};
    const std::string rest = commandLine.substr(program->nameEnd);
    for (const std::string& argument : splitArguments(rest, QuotePair::keepsQuoting)) {
        request.arguments.push_back(childText(argument));
    }
    return true;
}

// A drive that isn't mapped fails like a directory that isn't there.
bool prepareDirectory(LPCSTR directory, StartRequest& request) {
    if (directory == nullptr) {
        return true;
    }
    const auto host = hostPath(directory);
    if (!host) {
        return fail(ERROR_DIRECTORY);
    }
    request.directory = *host;
    return true;
}

// The stream behind a handle of STARTUPINFOA; none is /dev/null.
bool prepareStream(HANDLE handle, int& descriptor) {
    const bool none = handle == nullptr || handle == INVALID_HANDLE_VALUE;
    descriptor = none ? -1 : streamDescriptor(handle);
    return none || descriptor >= 0;
}

// Pipes that are asked for count more than the wish for no console.
bool prepareStreams(const STARTUPINFOA& startup, BOOL inheritHandles, DWORD flags,
                    StartRequest& request) {
    if (inheritHandles != FALSE && (startup.dwFlags & STARTF_USESTDHANDLES) != 0) {
        return prepareStream(startup.hStdInput, request.streams[0]) &&
               prepareStream(startup.hStdOutput, request.streams[1]) &&
               prepareStream(startup.hStdError, request.streams[2]);
    }
    if ((flags & (DETACHED_PROCESS | CREATE_NO_WINDOW)) != 0) {
        request.streams = {-1, -1, -1};
    }
    return true;
}

// What exec takes of one text, its terminator included, and of all together.
constexpr std::size_t longestArgument = std::size_t{32} * 4096;
const long longestArguments = sysconf(_SC_ARG_MAX);

}  // namespace

namespace corvane {

bool commandLineFits(const char* commandLine) {
    std::size_t size = 0;
    bool fits = true;
    const auto measure = [&](const char* argument) {
        const std::size_t length = std::strlen(argument) + 1;
        fits = fits && length <= longestArgument;
        size += length + sizeof(char*);
    };
    forEachFileArgument(commandLine, measure);
    // The environment needs its share.
    return fits && size < static_cast<std::size_t>(longestArguments) / 2;
}

void forEachFileArgument(const char* commandLine, TextTaker take) {
    const std::string line = commandLine;
    for (const std::string& argument :
         splitArguments(line.substr(programNameEnd(line)), QuotePair::keepsQuoting)) {
        take(childText(argument).c_str());
    }
}

DWORD batchProcessor(LPSTR /*buffer*/, DWORD /*size*/) {
    return 0;
}

}  // namespace corvane

// What can be found wrong before the fork is found here, the rest by ChildProcess.
BOOL CreateProcessA(LPCSTR application, LPSTR commandLine, LPSECURITY_ATTRIBUTES /*process*/,
                    LPSECURITY_ATTRIBUTES /*thread*/, BOOL inheritHandles, DWORD flags,
                    LPVOID environment, LPCSTR directory, LPSTARTUPINFOA startup,
                    LPPROCESS_INFORMATION information) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    if (application != nullptr || environment != nullptr || commandLine == nullptr ||
        *commandLine == '\0') {
        return fail(ERROR_INVALID_PARAMETER);
    }
    StartRequest request;
    // As it stands now: the launcher sets variables for one child and puts them back.
    request.environment = childEnvironment();
    request.suspended = (flags & CREATE_SUSPENDED) != 0;
    if (!prepareStreams(*startup, inheritHandles, flags, request) ||
        !prepareDirectory(directory, request) || !prepareProgram(commandLine, request)) {
        return FALSE;
    }
    const auto child = ChildProcess::start(request);
    if (child == nullptr) {
        return FALSE;
    }
    const DWORD id = static_cast<DWORD>(child->pid());
    // Windows numbers threads too; the one thread has its process's number.
    *information = {openHandle(std::make_unique<ProcessResource>(child)),
                    openHandle(std::make_unique<ThreadResource>(child)), id, id};
    return TRUE;
}

DWORD ResumeThread(HANDLE thread) {
    const auto* const resource =
        injectedFailure(__func__) ? nullptr : handleAs<ThreadResource>(thread);
    if (resource == nullptr) {
        return static_cast<DWORD>(-1);
    }
    const auto started = resource->child->resume();
    if (started && *started != NO_ERROR) {
        fail(*started);
        return static_cast<DWORD>(-1);
    }
    return started ? 1 : 0;
}

BOOL GetExitCodeProcess(HANDLE process, LPDWORD exitCode) {
    const auto* const resource =
        injectedFailure(__func__) ? nullptr : handleAs<ProcessResource>(process);
    if (resource == nullptr) {
        return FALSE;
    }
    *exitCode = resource->child->exitCode().value_or(STILL_ACTIVE);
    return TRUE;
}

BOOL TerminateProcess(HANDLE process, UINT exitCode) {
    const auto* const resource =
        injectedFailure(__func__) ? nullptr : handleAs<ProcessResource>(process);
    if (resource == nullptr) {
        return FALSE;
    }
    resource->child->end(exitCode);
    return TRUE;
}

DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds) {
    const auto* const resource =
        injectedFailure(__func__) ? nullptr : handleAs<ChildResource>(handle);
    if (resource == nullptr) {
        return WAIT_FAILED;
    }
    return resource->child->wait(milliseconds) ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
}

void GetSystemTime(LPSYSTEMTIME time) {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    tm parts{};
    gmtime_r(&now.tv_sec, &parts);
    const auto word = [](long number) { return static_cast<WORD>(number); };
    *time = {word(parts.tm_year + 1900), word(parts.tm_mon + 1),       word(parts.tm_wday),
             word(parts.tm_mday),        word(parts.tm_hour),          word(parts.tm_min),
             word(parts.tm_sec),         word(now.tv_nsec / 1'000'000)};
}

ULONGLONG GetTickCount64() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<ULONGLONG>(now.tv_sec) * 1000 +
           static_cast<ULONGLONG>(now.tv_nsec) / 1'000'000;
}

// Ordered to fail, it ends at once.
void Sleep(DWORD milliseconds) {
    if (injectedFailure(__func__)) {
        return;
    }
    timespec rest{static_cast<time_t>(milliseconds / 1000),
                  static_cast<long>(milliseconds % 1000) * 1000000};
    // A signal leaves the rest to sleep.
    while (nanosleep(&rest, &rest) != 0) {
    }
}

DWORD SleepEx(DWORD milliseconds, BOOL /*alertable*/) {
    Sleep(milliseconds);
    return 0;
}

HANDLE GetCurrentProcess() {
    return reinterpret_cast<HANDLE>(LONG_PTR{-1});
}

HANDLE GetCurrentThread() {
    return reinterpret_cast<HANDLE>(LONG_PTR{-2});
}

// The host gives every run the priority that it was started with.
BOOL SetThreadPriority(HANDLE thread, int /*priority*/) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    return thread == GetCurrentThread() || handleAs<ThreadResource>(thread) != nullptr;
}

BOOL SetPriorityClass(HANDLE process, DWORD /*priorityClass*/) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    return process == GetCurrentProcess() || handleAs<ProcessResource>(process) != nullptr;
}
