// Children by fork and exec. A pipe that exec closes carries the reason of a failed start back, so
// that starting a program fails in the call that starts it.
#include "platform/hosted/ChildProcess.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
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
constexpr long lookAgainMilliseconds = 10;

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

// What launcher and child have to say to each other between fork and exec.
struct Channels {
    Pipe report;   // 4 bytes: a Windows code; 0 is "ready, but suspended"
    Pipe release;  // one byte lets a suspended child go: one of these
};
constexpr char goesAlone = 0;
constexpr char endsWithLauncher = 1;

// Nobody reads the exit code: the launcher reports the code from the pipe.
[[noreturn]] void reportAndExit(const Channels& channels, DWORD code) {
    [[maybe_unused]] const auto written = write(channels.report.writeEnd.get(), &code, sizeof code);
    _exit(127);
}

// Waits for what the child has to say; 0 is "ready", and so is the end of the pipe, by exec.
DWORD reportedCode(const Pipe& report) {
    DWORD code = 0;
    const auto size = untilDone([&] { return read(report.readEnd.get(), &code, sizeof code); });
    return size == sizeof code ? code : 0;
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
void awaitRelease(Channels& channels, pid_t launcher) {
    const DWORD ready = 0;
    char byte = 0;
    channels.release.writeEnd.close();
    if (write(channels.report.writeEnd.get(), &ready, sizeof ready) < 0 ||
        untilDone([&] { return read(channels.release.readEnd.get(), &byte, 1); }) != 1) {
        _exit(127);
    }
    // The host tells of no end that came before it was asked to.
    if (byte == endsWithLauncher &&
        (prctl(PR_SET_PDEATHSIG, SIGKILL) != 0 || getppid() != launcher)) {
        _exit(127);
    }
}

// Holds signals back while a child is made, so that the launcher's own handlers take none of them
// in the child.
class SignalsHeld {
  public:
    SignalsHeld() {
        sigset_t all;
        sigfillset(&all);
        sigprocmask(SIG_SETMASK, &all, &former_);
    }
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;
    ~SignalsHeld() { release(); }

    void release() { sigprocmask(SIG_SETMASK, &former_, nullptr); }

  private:
    sigset_t former_{};
};

// What the launcher handles ends a child; what it was started to ignore, the child ignores too.
void forgetHandlers() {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action {};
        sigaction(number, nullptr, &action);
        if (action.sa_handler != SIG_IGN) {
            std::signal(number, SIG_DFL);
        }
    }
}

// The child's side of the fork. A session of its own keeps the terminal's signals away; the
// directory comes before the wait of a suspended child, so that its failure is still reported.
[[noreturn]] void runChild(const StartRequest& request, Channels& channels, pid_t launcher) {
    if (request.ownSession) {
        setsid();
    }
    connectStreams(request.streams);
    if (!request.directory.empty() && chdir(request.directory.c_str()) != 0) {
        reportAndExit(channels, ERROR_DIRECTORY);
    }
    if (request.suspended) {
        awaitRelease(channels, launcher);
    }
    // What this layer opens is closed by exec anyway; this is for what the launcher inherited.
    close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
    execve(request.program.c_str(), pointersTo(request.arguments).data(),
           pointersTo(request.environment).data());
    reportAndExit(channels, windowsCode(errno));
}

// Children that nobody has a handle of any more and that still ran when the last one was closed.
std::vector<pid_t>& abandoned() {
    static auto& pids = *new std::vector<pid_t>;
    return pids;
}

// Taken off the process table just now, or no child any more.
bool isGone(pid_t pid) {
    return waitpid(pid, nullptr, WNOHANG) != 0;
}

// Takes off all that have ended.
void collectAbandoned() {
    std::erase_if(abandoned(), isGone);
}

}  // namespace

// Reading the report ends when exec has closed the pipe, or with the child's words.
std::shared_ptr<ChildProcess> ChildProcess::start(const StartRequest& request) {
    // Started by a parent that ignores SIGCHLD, the launcher would never learn an exit code.
    std::signal(SIGCHLD, SIG_DFL);
    collectAbandoned();
    Channels channels;
    // The pipes are closed by exec, and the child's copies of the ends that it doesn't use with it.
    if (!makePipe(channels.report) || (request.suspended && !makePipe(channels.release))) {
        failWithErrno();
        return nullptr;
    }
    SignalsHeld held;
    const pid_t launcher = getpid();
    const pid_t pid = fork();
    if (pid < 0) {
        failWithErrno();
        return nullptr;
    }
    if (pid == 0) {
        forgetHandlers();
        held.release();
        runChild(request, channels, launcher);
    }
    held.release();
    // As long as this end is open here, the pipe can't come to its end.
    channels.report.writeEnd.close();
    const DWORD code = reportedCode(channels.report);
    if (code != 0) {
        // The child that failed has ended, or is about to.
        untilDone([&] { return waitpid(pid, nullptr, 0); });
        fail(code);
        return nullptr;
    }
    return std::make_shared<ChildProcess>(pid, std::move(channels.release),
                                          request.suspended ? std::move(channels.report) : Pipe());
}

// Nobody can ask for the exit code any more, but the host keeps it until it is taken.
ChildProcess::~ChildProcess() {
    if (!code_) {
        abandoned().push_back(pid_);
        collectAbandoned();
    }
}

// Takes an ended child off the table; with no option it waits for the end.
void ChildProcess::collect(int waitOptions) {
    if (code_) {
        return;
    }
    int status = 0;
    const pid_t ended = untilDone([&] { return waitpid(pid_, &status, waitOptions); });
    if (ended == pid_) {
        code_ =
            static_cast<DWORD>(WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status));
    } else if (ended < 0) {
        code_ = lostExitCode;
    }
}

std::optional<DWORD> ChildProcess::exitCode() {
    collect(WNOHANG);
    return code_;
}

// Waits by a descriptor that can be read when the child has ended. Where the host gives none, this
// looks again and again. A signal for the launcher ends the wait early: its caller has to look.
bool ChildProcess::wait(DWORD milliseconds) {
    using Clock = std::chrono::steady_clock;
    if (milliseconds == INFINITE) {
        collect(0);
        return true;
    }
    const Descriptor end(static_cast<int>(syscall(SYS_pidfd_open, pid_, 0)));
    // A steady clock: setting the time of day changes no wait.
    const auto limit = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (!exitCode()) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(limit - Clock::now()).count();
        pollfd state{end.get(), POLLIN, 0};
        const auto most = end ? left : std::min<long>(left, lookAgainMilliseconds);
        if (left <= 0 || poll(&state, 1, static_cast<int>(most)) < 0) {
            return false;
        }
    }
    return true;
}

void ChildProcess::end(DWORD code) {
    if (exitCode()) {
        return;
    }
    kill(pid_, SIGKILL);
    collect(0);
    code_ = code;
}

void ChildProcess::endGroup(DWORD code) {
    const bool ran = !exitCode();
    kill(-pid_, SIGKILL);
    if (ran) {
        collect(0);
        code_ = code;
    }
}

bool ChildProcess::formGroup() {
    return setpgid(pid_, pid_) == 0;
}

std::optional<DWORD> ChildProcess::resume() {
    if (!release_.writeEnd) {
        return std::nullopt;
    }
    const char byte = endsWithLauncher_ ? endsWithLauncher : goesAlone;
    [[maybe_unused]] const auto written = write(release_.writeEnd.get(), &byte, 1);
    release_ = {};
    const DWORD code = reportedCode(report_);
    report_ = {};
    return code;
}

}  // namespace corvane::hosted
