// The launcher's work on its own file, against reading and copying it plainly.
#include <cstdio>
#include <fstream>
#include <random>
#include <vector>

#include "Comparison.h"
#include "launcherfile/FileIndexEntry.h"
#include "launcherfile/LauncherKind.h"
#include "platform/Platform.h"
#include "support/Scratch.h"
#include "support/TestContext.h"

namespace corvane::bench {

namespace {

constexpr std::int32_t fileSize = 256 << 20;

// Writes bytes without a pattern, as compressed archives are. The seed is fixed; with it no
// identification value comes up.
void writeLargeFile(const test::Scratch& scratch) {
    std::mt19937_64 generator(1);
    std::vector<std::uint64_t> block(1 << 17);
    for (std::uint64_t& word : block)
        word = generator();
    std::ofstream file(scratch.native("large"), std::ios::binary);
    const auto blockSize = static_cast<std::int32_t>(block.size() * sizeof block[0]);
    for (std::int32_t size = 0; size < fileSize; size += blockSize)
        file.write(reinterpret_cast<const char*>(block.data()), blockSize);
}

void readOnce(const String& path) {
    const StreamGuard file(openStream(path.cstr(), "rb"));
    std::vector<char> block(65536);
    while (std::fread(block.data(), 1, block.size(), file.get()) > 0)
        benchmark::DoNotOptimize(block.data());
}

void trailerSearch(benchmark::State& state) {
    const test::Scratch scratch;
    const test::TestContext run;
    writeLargeFile(scratch);
    const String path = scratch.path("large");
    compare(state, {"reading it once", [&] { benchmark::DoNotOptimize(launcherKind(path.cstr())); },
                    [&] { readOnce(path); }});
    if (run.context.trailerOffset != 0)
        state.SkipWithError("there is a trailer in the file");
}
BENCHMARK(trailerSearch)->Name("trailer search in 256 MiB")->Iterations(7)->UseManualTime();

void extraction(benchmark::State& state) {
    const test::Scratch scratch;
    test::TestContext run;
    writeLargeFile(scratch);
    std::filesystem::create_directory(scratch.native("out"));
    run.context.launcherPath = scratch.path("large");
    FileIndexEntry entry;
    entry.name = "copy";
    entry.length = fileSize;
    const std::string copy =
        "cp " + scratch.native("large").string() + " " + scratch.native("out/copy").string();
    const auto checked = [&](bool wellDone) {
        if (!wellDone || std::filesystem::file_size(scratch.native("out/copy")) != fileSize)
            state.SkipWithError("the copy failed");
    };
    compare(state, {"cp", [&] { checked(!entry.extract(scratch.path("out")).empty()); },
                    [&] { checked(std::system(copy.c_str()) == 0); },
                    [&] { std::filesystem::remove(scratch.native("out/copy")); }});
}
BENCHMARK(extraction)->Name("extraction of 256 MiB")->Iterations(5)->UseManualTime();

}  // namespace

}  // namespace corvane::bench
