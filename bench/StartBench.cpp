// A launch on a remembered home against a plain program that starts the application. `bench/run`
// prepares the programs and gives the commands that time them.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "Comparison.h"

namespace corvane::bench {

namespace {

// `variable` names a command that prints the seconds of the plain program, of a launcher whose
// script names the home, and of one that remembers it.
void startTimes(benchmark::State& state, const char* variable, const std::string& goal) {
    const char* const command = std::getenv(variable);
    if (command == nullptr) {
        state.SkipWithError("use bench/run");
        return;
    }
    double plain = -1;
    double told = -1;
    double remembered = -1;
    std::FILE* const output = popen(command, "r");
    const int read = std::fscanf(output, "%lf %lf %lf", &plain, &told, &remembered);
    pclose(output);
    if (read != 3 || plain < 0 || told < 0 || remembered < 0)
        state.SkipWithError("a program can't be started");
    for ([[maybe_unused]] auto iteration : state)
        state.SetIterationTime(remembered);
    state.counters["ours"] = remembered;
    state.counters["theirs"] = plain;
    char scripted[64];
    std::snprintf(scripted, sizeof scripted, "; a script that names the home %.1f ms", told * 1e3);
    state.SetLabel(
        labelOf(std::string("a plain program that starts it") + scripted, goal + " more"));
}

void hostStart(benchmark::State& state) {
    startTimes(state, "CORVANE_BENCH_START", "2 ms");
}
BENCHMARK(hostStart)->Name("launch on a remembered home")->Iterations(1)->UseManualTime();

void wineStart(benchmark::State& state) {
    startTimes(state, "CORVANE_BENCH_WINE_START", "5 ms");
}
BENCHMARK(wineStart)->Name("the same under Wine, on one core")->Iterations(1)->UseManualTime();

}  // namespace

}  // namespace corvane::bench
