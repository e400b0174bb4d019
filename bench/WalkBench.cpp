// The disk walk against `find`, `fd` and a walk from C, all as programs of their own with their
// peak memory. What to run comes from `bench/run`: the tree in CORVANE_BENCH_TREE, the walks under
// Wine in CORVANE_BENCH_WINE_WALK and CORVANE_BENCH_WINE_PLAIN_WALK.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "Comparison.h"

namespace corvane::bench {

namespace {

struct Search {
    int hits = 0;
    double peakMiB = 0;
    bool wellDone = false;
};

// Runs `command`, which writes a line for each hit. It is forked, not spawned: a spawned program's
// peak memory would never be less than that of this one.
Search search(const std::string& command) {
    Search result;
    int pipe[2];
    if (::pipe(pipe) != 0)
        return result;
    const pid_t child = fork();
    if (child == 0) {
        dup2(pipe[1], STDOUT_FILENO);
        execl("/bin/sh", "sh", "-c", ("exec " + command).c_str(), nullptr);
        _exit(127);
    }
    close(pipe[1]);
    std::FILE* const output = fdopen(pipe[0], "r");
    for (int character = std::getc(output); character != EOF; character = std::getc(output))
        result.hits += character == '\n';
    std::fclose(output);
    int status = 0;
    rusage usage{};
    result.wellDone = wait4(child, &status, 0, &usage) == child && status == 0;
    result.peakMiB = static_cast<double>(usage.ru_maxrss) / 1024;
    return result;
}

// What is walked by `ours`, and by `other` with the tree and its name behind it.
struct Race {
    std::string ours;
    std::string other;
    const char* goal;
};

void walk(benchmark::State& state, const char* against, const Race& race) {
    if (race.ours.empty() || race.other.empty()) {
        state.SkipWithError("use bench/run");
        return;
    }
    Search ours;
    Search theirs;
    compare(state, {"", [&] { ours = search(race.ours); }, [&] { theirs = search(race.other); }});
    if (!ours.wellDone || !theirs.wellDone || ours.hits != theirs.hits)
        state.SkipWithError("the walks don't agree");
    char memory[64];
    std::snprintf(memory, sizeof memory, "; peak memory %.1f : %.1f MiB", ours.peakMiB,
                  theirs.peakMiB);
    state.SetLabel(labelOf(std::string(against) + memory, race.goal));
}

const std::string hostCommand = "env \"CORVANE_DRIVES=T=$CORVANE_BENCH_TREE\" '" BENCH_WALK "' T:";

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

void besideFind(benchmark::State& state) {
    walk(state, "find", {hostCommand, "find \"$CORVANE_BENCH_TREE\" -name java.exe", "0.60"});
}
BENCHMARK(besideFind)->Name("walk over 200000 files")->Iterations(11)->UseManualTime();

void besideFd(benchmark::State& state) {
    walk(state, "fd, one thread",
         {hostCommand, "fdfind -u -j1 -g java.exe \"$CORVANE_BENCH_TREE\"", "1.00"});
}
BENCHMARK(besideFd)->Name("the same beside fd")->Iterations(11)->UseManualTime();

void wineWalk(benchmark::State& state) {
    walk(state, "FindFirstFileExA from C",
         {variable("CORVANE_BENCH_WINE_WALK"), variable("CORVANE_BENCH_WINE_PLAIN_WALK"), "1.10"});
}
BENCHMARK(wineWalk)->Name("walk over 200000 files, Wine")->Iterations(3)->UseManualTime();

}  // namespace

}  // namespace corvane::bench
