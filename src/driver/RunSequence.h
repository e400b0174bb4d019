// The run sequence that both front ends carry out, each on its own thread.
#pragma once

#include <cstdint>

#include "driver/ArgumentVector.h"
#include "foundation/String.h"

namespace corvane {

// Where the front ends differ.
class RunObserver {
  public:
    // The script has run; takes the exit value.
    virtual void onRunEnded(std::int32_t result) = 0;
    // Shows what a failed child wrote to its standard error.
    virtual void showFailureText(const String& text) = 0;

  protected:
    ~RunObserver() = default;
};

// Runs the launcher with `arguments`, of which there is at least one, shows the child's failure
// text, and cleans up. Gives the exit value.
std::int32_t runSequence(const ArgumentVector& arguments, RunObserver& observer);

}  // namespace corvane
