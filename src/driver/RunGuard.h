// `RunGuard`: holds a run on the stack of its sequence and cleans up behind it, however it ends.
#pragma once

namespace corvane {

class RunGuard {
  public:
    RunGuard() = default;
    RunGuard(const RunGuard&) = delete;
    RunGuard& operator=(const RunGuard&) = delete;
    // Runs the cleanup at exit and swallows whatever it raises.
    ~RunGuard();
};

}  // namespace corvane
