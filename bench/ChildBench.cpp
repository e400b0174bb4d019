// The collecting of a child's output against a plain loop of reads that keeps nothing.
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "Comparison.h"
#include "process/ProcessRunner.h"
#include "support/Scratch.h"
#include "support/TestContext.h"

namespace corvane::bench {

namespace {

constexpr std::size_t outputSize = 500'000'000;

std::size_t collect(const std::string& command) {
    String out;
    ProcessOptions options;
    options.collect = true;
    runCommand(command.c_str(), String(), options, &out);
    return out.length();
}

std::size_t readPlainly(const std::string& command) {
    std::FILE* const pipe = popen(command.c_str(), "r");
    char block[4096];
    std::size_t total = 0;
    for (ssize_t size = 1; size > 0; total += static_cast<std::size_t>(size))
        size = std::max<ssize_t>(read(fileno(pipe), block, sizeof block), 0);
    pclose(pipe);
    return total;
}

void collecting(benchmark::State& state) {
    const test::Scratch scratch;
    const test::TestContext run;
    scratch.write("output", std::string(outputSize, 'x'));
    const std::string command = "/bin/cat " + scratch.native("output").string();
    const auto checked = [&](std::size_t size) {
        if (size != outputSize)
            state.SkipWithError("the output isn't complete");
    };
    compare(state, {"a loop of 4096-byte reads", [&] { checked(collect(command)); },
                    [&] { checked(readPlainly(command)); }});
}
BENCHMARK(collecting)->Name("collecting 500 MB of output")->Iterations(5)->UseManualTime();

}  // namespace

}  // namespace corvane::bench
