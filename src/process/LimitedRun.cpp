// A child with a time limit, in a job that ends it and what it has started.
#include "process/LimitedRun.h"

#include <optional>

#include "base/Messages.h"
#include "base/RunContext.h"
#include "foundation/Exceptions.h"
#include "process/ChildStart.h"

namespace corvane {

namespace {

constexpr DWORD lookMs = 20;  // at the pipes and for a cancel; the child's end is noticed at once
constexpr DWORD deathMs = 1000;
constexpr std::uint64_t mostOutput = std::uint64_t{1} << 20;

// None, where the system refuses a job below a job, as before Windows 8: the child is then ended
// alone.
HandleGuard jobOf(const Child& child) {
    HandleGuard job(CreateJobObjectA(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    const bool holds = job &&
                       SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation,
                                               &limits, sizeof limits) &&
                       AssignProcessToJobObject(job.get(), child.process.get());
    return holds ? std::move(job) : HandleGuard();
}

// A running child, which doesn't outlive this object.
class LimitedChild {
  public:
    LimitedChild(const String& commandLine, const String& workingDirectory)
        : child_(startPipedChild(commandLine, workingDirectory,
                                 creationFlags(false, false) | CREATE_SUSPENDED)),
          job_(jobOf(child_)) {
        if (ResumeThread(child_.thread.get()) == static_cast<DWORD>(-1)) {
            const DWORD code = GetLastError();
            TerminateProcess(child_.process.get(), 1);
            throwSystemError("CreateProcess failed  ==>  ", code, programOf(commandLine));
        }
    }
    LimitedChild(const LimitedChild&) = delete;
    LimitedChild& operator=(const LimitedChild&) = delete;
    ~LimitedChild() {
        if (!job_ || !TerminateJobObject(job_.get(), 1))
            TerminateProcess(child_.process.get(), 1);
        WaitForSingleObject(child_.process.get(), deathMs);
    }

    // Collects what it writes until it ends or has to.
    LimitedRun::End collect(std::uint64_t milliseconds, CollectedOutput& out,
                            CollectedOutput& err) {
        const std::uint64_t start = GetTickCount64();
        std::uint64_t collected = 0;
        DWORD read = 0;
        while (true) {
            const bool ended = hasEnded(read == 0 ? lookMs : 0);
            read = readPipe(out, child_.out.get()) + readPipe(err, child_.err.get());
            collected += read;
            if (runContext().cancelRequested)
                return LimitedRun::End::canceled;
            if (ended && read == 0)
                return LimitedRun::End::byItself;
            if (collected > mostOutput)
                return LimitedRun::End::tooMuchOutput;
            if (GetTickCount64() - start >= milliseconds)
                return LimitedRun::End::outOfTime;
        }
    }

  private:
    bool hasEnded(DWORD pause) const {
        const DWORD state = WaitForSingleObject(child_.process.get(), pause);
        if (state == WAIT_FAILED)
            throwSystemError("CreateProcess unable to wait for completion ==> ", GetLastError());
        return state == WAIT_OBJECT_0;
    }

    const PipedChild child_;
    const HandleGuard job_;
};

}  // namespace

LimitedRun runLimited(const String& commandLine, const String& workingDirectory,
                      std::uint64_t milliseconds, String& stdOut, String& errOut) {
    if (runContext().cancelRequested)
        return {LimitedRun::End::canceled, {}};
    std::optional<LimitedChild> child;
    try {
        child.emplace(commandLine, workingDirectory);
    } catch (const LauncherException& failure) {
        return {LimitedRun::End::notStarted, failure.message};
    }
    Collection out(&stdOut);
    Collection err(&errOut);
    return {child->collect(milliseconds, out.output, err.output), {}};
}

}  // namespace corvane
