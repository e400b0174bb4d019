// The disk walk against `find`, both as programs of their own with their peak memory. What to run
// comes from `bench/run`: the tree in CORVANE_BENCH_TREE, the walk under Wine in
// CORVANE_BENCH_WINE_WALK.
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

void walk(benchmark::State& state, const std::string& command, const std::string& goal) {
    const char* const tree = std::getenv("CORVANE_BENCH_TREE");
    if (tree == nullptr || command.empty()) {
        state.SkipWithError("use bench/run");
        return;
    }
    const std::string find = std::string("find '") + tree + "' -name java.exe";
    Search ours;
    Search theirs;
    compare(state, {"", [&] { ours = search(command); }, [&] { theirs = search(find); }});
    if (!ours.wellDone || !theirs.wellDone || ours.hits != theirs.hits)
        state.SkipWithError("walk and find don't agree");
    char memory[64];
    std::snprintf(memory, sizeof memory, "; peak memory %.1f : %.1f MiB", ours.peakMiB,
                  theirs.peakMiB);
    state.SetLabel("find -name java.exe" + goal + memory);
}

void hostWalk(benchmark::State& state) {
    walk(state,
         "env \"CORVANE_DRIVES=T=$CORVANE_BENCH_TREE\" '" BENCH_WALK "' T:", ", goal at most 1");
}
BENCHMARK(hostWalk)->Name("walk over 200000 files")->Iterations(11)->UseManualTime();

void wineWalk(benchmark::State& state) {
    const char* const command = std::getenv("CORVANE_BENCH_WINE_WALK");
    walk(state, command != nullptr ? command : "", "");
}
BENCHMARK(wineWalk)->Name("the same under Wine")->Iterations(3)->UseManualTime();

}  // namespace

}  // namespace corvane::bench
