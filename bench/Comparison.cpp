// Measuring in turn.
#include "Comparison.h"

#include <algorithm>
#include <chrono>

namespace corvane::bench {

namespace {

// Seconds that `action` takes.
double secondsOf(const Action& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

}  // namespace

void compare(benchmark::State& state, const Contest& contest) {
    for (const Action& action : {contest.ours, contest.theirs}) {
        action();
        contest.between();
    }
    std::vector<double> ours;
    std::vector<double> theirs;
    for ([[maybe_unused]] auto iteration : state) {
        ours.push_back(secondsOf(contest.ours));
        contest.between();
        theirs.push_back(secondsOf(contest.theirs));
        contest.between();
        state.SetIterationTime(ours.back());
    }
    state.counters["ours"] = median(ours);
    state.counters["theirs"] = median(theirs);
    state.SetLabel(labelOf(contest.against, contest.goal));
}

}  // namespace corvane::bench
