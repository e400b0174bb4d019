// A child process of the host: its start, its end and its exit code.
#pragma once

#include <sys/types.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/hosted/Handles.h"

namespace corvane::hosted {

// What to start. Descriptors stay the caller's; -1 stands for /dev/null.
struct StartRequest {
    std::string program;                   // absolute host path
    std::vector<std::string> arguments;    // with the program name
    std::vector<std::string> environment;  // NAME=value
    std::string directory;                 // host path; empty: the launcher's own
    std::array<int, 3> streams{0, 1, 2};
    bool suspended = false;   // hold the child until `resume`
    bool ownSession = false;  // out of reach of the launcher's terminal
};

// One child. A child that ends is taken off the host's process table when it is asked for or, if
// nobody has it any more, when the next one is started or given up.
class ChildProcess {
  public:
    // Null, with the last error, if it can't be started: 267 for the directory, else what exec
    // said. Of a suspended child the start of the program itself is not yet known to succeed.
    static std::shared_ptr<ChildProcess> start(const StartRequest& request);

    // The two pipes are those of a suspended child, else empty.
    ChildProcess(pid_t pid, Pipe release, Pipe report)
        : pid_(pid), release_(std::move(release)), report_(std::move(report)) {}
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t pid() const { return pid_; }

    // The exit status, 128 + n after signal n; none while the child runs.
    std::optional<DWORD> exitCode();

    // Waits for the end, at most so many milliseconds; false if it is still to come.
    bool wait(DWORD milliseconds);

    // Ends the child, if it still runs, with this exit code.
    void end(DWORD code);

    // Lets a suspended child go, and gives the Windows code of its start: 0, or why its program
    // can't be run. None if it wasn't suspended.
    std::optional<DWORD> resume();

    // Makes a suspended child the head of a process group of its own; false, with errno, if it
    // isn't suspended any more.
    bool formGroup();
    // Ends the child, and all else that is in that group.
    void endGroup(DWORD code);
    // Has the host end a suspended child, once it goes, as soon as the thread that started it is
    // gone.
    void endWithLauncher() { endsWithLauncher_ = true; }

  private:
    void collect(int waitOptions);

    const pid_t pid_;
    // A suspended child waits for a byte from here. The reading end is kept too, so that writing
    // never meets a pipe without a reader.
    Pipe release_;
    Pipe report_;  // brings the reason of a failed start
    bool endsWithLauncher_ = false;
    std::optional<DWORD> code_;
};

// The handles of a child's process and of its one thread share the child.
struct ChildResource : Resource {
    explicit ChildResource(std::shared_ptr<ChildProcess> started) : child(std::move(started)) {}
    std::shared_ptr<ChildProcess> child;
};
// Two kinds, so that a thread handle isn't taken for a process handle.
struct ProcessResource final : ChildResource {
    using ChildResource::ChildResource;
};
struct ThreadResource final : ChildResource {
    using ChildResource::ChildResource;
};

}  // namespace corvane::hosted
