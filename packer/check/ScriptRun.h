// An instruction script as the launcher's interpreter runs it, with nothing carried out: every step
// is one line, and where a run depends on the machine, both ways can be gone.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "instructions/Instructions.h"
#include "packer/check/CheckedProject.h"

namespace corvane::pack {

// Where a run stands.
struct ScriptState {
    Instructions position;
    std::array<std::int32_t, 5> numbers{};  // N1 to N5
    std::array<String, 10> texts;           // S1 to S10
    bool started = false;                   // an application or another launcher
    bool told = false;                      // the user read that something is missing

    // The same for equal states alone.
    std::string key() const;
};

// What a line led to.
struct ScriptStep {
    bool ended = false;          // no line was left, or the run ended with a message
    bool depends = false;        // on the machine: with the other outcome it may lead elsewhere
    const char* rule = nullptr;  // of a mistake, which ended the run; null without one
    std::string text;
    std::string hint;
};

class ScriptRun {
  public:
    // The project, which has a script, stays the caller's.
    explicit ScriptRun(const CheckedProject& project);
    ~ScriptRun();
    ScriptRun(const ScriptRun&) = delete;
    ScriptRun& operator=(const ScriptRun&) = delete;

    ScriptState start();
    // Carries out the line at which `state` stands. `outcome` is what the machine makes of it: a
    // JVM is found or installed, the application ends with 1.
    ScriptStep step(ScriptState& state, bool outcome);

  private:
    class LookingWork;

    const CheckedFile& script_;
    const std::unique_ptr<LookingWork> work_;
};

}  // namespace corvane::pack
