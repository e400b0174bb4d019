// A benchmark that measures our way of doing something against another way in the same run.
#pragma once

#include <functional>
#include <string>

#include "benchmark/benchmark.h"

namespace corvane::bench {

using Action = std::function<void()>;

// The two ways, each one whole piece of work.
struct Contest {
    const char* against;     // what `theirs` is, for the table
    Action ours;             // the launcher's way
    Action theirs;           // the other way
    Action between = [] {};  // cleans up behind each of them, untimed
    const char* goal = "";   // the ratio to reach, for the table
};

// Runs both ways once for warming up, then in turn in each iteration, so that both meet the same
// machine. Leaves the medians, in seconds, in the counters `ours` and `theirs`, and in the label
// what `labelOf` gives.
void compare(benchmark::State& state, const Contest& contest);

// What the table says of a row beside its times.
inline std::string labelOf(const std::string& against, const std::string& goal) {
    return against + "\t" + goal;
}

}  // namespace corvane::bench
