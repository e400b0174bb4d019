// Children by fork and exec. A pipe that exec closes carries the reason of a failed start back, so
// that starting a program fails in the call that starts it.
#include "platform/hosted/ChildProcess.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>

#include "platform/hosted/Errors.h"
#include "platform/hosted/ProcessOperations.h"

namespace corvane::hosted {

namespace {

// For a child whose end was reported to somebody else; better than to wait for it for ever.
constexpr DWORD lostExitCode = 255;

// Ends a call that a signal broke off by repeating it.
template <class Call>
auto untilDone(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

// The form in which exec wants its lists; valid as long as the texts.
std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (const std::string& text : texts) {
        pointers.push_back(const_cast<char*>(text.c_str()));  // exec promises not to write
    }
    pointers.push_back(nullptr);
    return pointers;
}

// Everything that the child needs between fork and exec, made before the fork: in a copy of a
// process with threads nothing may be allocated.
struct Prepared {
    explicit Prepared(const StartRequest& asked)
        : request(asked),
          arguments(pointersTo(asked.arguments)),
          environment(pointersTo(asked.environment)) {}
    const StartRequest& request;
    std::vector<char*> arguments;
    std::vector<char*> environment;
    Pipe report;   // 4 bytes: a Windows code; 0 is "ready, but suspended"
    Pipe release;  // one byte lets a suspended child go
};

// Nobody reads the exit code: the launcher reports the code from the pipe.
[[noreturn]] void reportAndExit(const Prepared& prepared, DWORD code) {
    [[maybe_unused]] const auto written = write(prepared.report.writeEnd.get(), &code, sizeof code);
    _exit(127);
}

// Copies lie above the standard ones first, so that none is overwritten before its turn.
void connectStreams(const std::array<int, 3>& streams) {
    int copies[3];
    for (std::size_t i = 0; i < streams.size(); ++i) {
        copies[i] = streams[i] < 0 ? -1 : fcntl(streams[i], F_DUPFD_CLOEXEC, 3);
        if (copies[i] < 0) {
            copies[i] = open("/dev/null", O_RDWR | O_CLOEXEC);
        }
    }
    for (int i = 0; i < 3; ++i) {
        dup2(copies[i], i);
    }
}

// A launcher that is gone without a word leaves no suspended child behind.
void awaitRelease(Prepared& prepared) {
    const DWORD ready = 0;
    char byte = 0;
    prepared.release.writeEnd.close();
    if (write(prepared.report.writeEnd.get(), &ready, sizeof ready) < 0 ||
        untilDone([&] { return read(prepared.release.readEnd.get(), &byte, 1); }) != 1) {
        _exit(127);
    }
}

// The child's side of the fork. A session of its own keeps the terminal's signals away; the
// directory comes before the wait of a suspended child, so that its failure is still reported.
[[noreturn]] void runChild(Prepared& prepared) {
    const StartRequest& request = prepared.request;
    if (request.ownSession) {
        setsid();
    }
    connectStreams(request.streams);
    if (!request.directory.empty() && chdir(request.directory.c_str()) != 0) {
        reportAndExit(prepared, ERROR_DIRECTORY);
    }
    if (request.suspended) {
        awaitRelease(prepared);
    }
    // What this layer opens is closed by exec anyway; this is for what the launcher inherited.
    close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
    execve(request.program.c_str(), prepared.arguments.data(), prepared.environment.data());
    reportAndExit(prepared, windowsCode(errno));
}

// Children that nobody has a handle of any more and that still ran when the last one was closed.
struct Abandoned {
    std::mutex mutex;
    std::vector<pid_t> pids;
};

Abandoned& abandoned() {
    static Abandoned& list = *new Abandoned;
    return list;
}

// Taken off the process table just now, or no child any more.
bool isGone(pid_t pid) {
    return waitpid(pid, nullptr, WNOHANG) != 0;
}

// Adds a child to the list, if there is one, and takes off all that have ended.
void collectAbandoned(std::optional<pid_t> another) {
    Abandoned& list = abandoned();
    const std::lock_guard lock(list.mutex);
    if (another) {
        list.pids.push_back(*another);
    }
    std::erase_if(list.pids, isGone);
}

// Started by a parent that ignores SIGCHLD, the launcher would never learn an exit code.
void keepExitCodes() {
    struct sigaction action {};
    if (sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) {
        std::signal(SIGCHLD, SIG_DFL);
    }
}

}  // namespace

// Reading the report ends when exec has closed the pipe, or with the child's words.
std::shared_ptr<ChildProcess> ChildProcess::start(const StartRequest& request) {
    keepExitCodes();
    collectAbandoned(std::nullopt);
    Prepared prepared(request);
    // The pipes are closed by exec, and the child's copies of the ends that it doesn't use with it.
    if (!makePipe(prepared.report) || (request.suspended && !makePipe(prepared.release))) {
        failWithErrno();
        return nullptr;
    }
    const pid_t pid = fork();
    if (pid < 0) {
        failWithErrno();
        return nullptr;
    }
    if (pid == 0) {
        runChild(prepared);
    }
    // As long as this end is open here, the pipe can't come to its end.
    prepared.report.writeEnd.close();
    DWORD code = 0;
    if (untilDone([&] { return read(prepared.report.readEnd.get(), &code, sizeof code); }) > 0 &&
        code != 0) {
        // The child that failed has ended, or is about to.
        untilDone([&] { return waitpid(pid, nullptr, 0); });
        fail(code);
        return nullptr;
    }
    return std::make_shared<ChildProcess>(pid, std::move(prepared.release));
}

// Nobody can ask for the exit code any more, but the host keeps it until it is taken.
ChildProcess::~ChildProcess() {
    if (!code_) {
        collectAbandoned(pid_);
    }
}

std::optional<DWORD> ChildProcess::exitCode() {
    const std::lock_guard lock(mutex_);
    if (code_) {
        return code_;
    }
    int status = 0;
    const pid_t ended = untilDone([&] { return waitpid(pid_, &status, WNOHANG); });
    if (ended == pid_) {
        code_ =
            static_cast<DWORD>(WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status));
    } else if (ended < 0) {
        code_ = lostExitCode;
    }
    return code_;
}

// Leaves the child on the table for `exitCode`, so that threads may wait and ask at once.
void ChildProcess::waitUntilEnd() const {
    siginfo_t info{};
    untilDone([&] { return waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOWAIT); });
}

// The host can't wait for one child with a time limit, so this looks again and again, after a
// millisecond at first and 16 at most.
bool ChildProcess::wait(DWORD milliseconds) {
    using Clock = std::chrono::steady_clock;
    if (milliseconds == INFINITE) {
        if (!exitCode()) {
            waitUntilEnd();
        }
        return exitCode().has_value();
    }
    // A steady clock: setting the time of day changes no wait.
    const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
    for (DWORD pause = 1; !exitCode(); pause = std::min<DWORD>(pause * 2, 16)) {
        if (Clock::now() >= end) {
            return false;
        }
        Sleep(pause);
    }
    return true;
}

bool ChildProcess::resume() {
    const std::lock_guard lock(mutex_);
    const bool suspended = static_cast<bool>(release_.writeEnd);
    if (suspended) {
        [[maybe_unused]] const auto written = write(release_.writeEnd.get(), "", 1);
        release_ = {};
    }
    return suspended;
}

}  // namespace corvane::hosted
