// `RunDecision`: the state of the option loop.
#pragma once

#include <cstdint>

namespace corvane {

// What the options decide about the rest of the run.
struct RunDecision {
    bool runScript = true;    // the instruction script runs behind the option loop
    std::int32_t result = 0;  // the exit value if it doesn't
};

}  // namespace corvane
