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

    // `release` is the pipe of a suspended child, else empty.
    ChildProcess(pid_t pid, Pipe release) : pid_(pid), release_(std::move(release)) {}
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

    // Lets a suspended child go; false if it wasn't.
    bool resume();

  private:
    void collect(int waitOptions);

    const pid_t pid_;
    // A suspended child waits for a byte from here. The reading end is kept too, so that writing
    // never meets a pipe without a reader.
    Pipe release_;
    std::optional<DWORD> code_;
};

}  // namespace corvane::hosted
