// The launcher's work on its own file, against reading and copying it plainly.
#include <cstdio>
#include <fstream>
#include <functional>
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
    const auto ours = [&] { benchmark::DoNotOptimize(launcherKind(path.cstr())); };
    const auto theirs = [&] { readOnce(path); };
    compare(state, {"reading it once", ours, theirs, [] {}, "1.50"});
    if (run.context.trailerOffset != 0)
        state.SkipWithError("there is a trailer in the file");
}
BENCHMARK(trailerSearch)->Name("trailer search in 256 MiB")->Iterations(7)->UseManualTime();

void copyPlainly(std::size_t blockSize, const std::string& from, const std::string& to) {
    std::FILE* const input = std::fopen(from.c_str(), "rb");
    std::FILE* const output = std::fopen(to.c_str(), "wb");
    std::setvbuf(input, nullptr, _IONBF, 0);
    std::setvbuf(output, nullptr, _IONBF, 0);
    std::vector<char> block(blockSize);
    for (std::size_t size = 1; size > 0;) {
        size = std::fread(block.data(), 1, block.size(), input);
        std::fwrite(block.data(), 1, size, output);
    }
    std::fclose(input);
    std::fclose(output);
}

// The copy to beat, which takes two paths.
using Copy = std::function<void(const std::string& from, const std::string& to)>;

void extraction(benchmark::State& state, const char* against, const Copy& copy,
                const char* goal = "") {
    const test::Scratch scratch;
    test::TestContext run;
    writeLargeFile(scratch);
    std::filesystem::create_directory(scratch.native("out"));
    run.context.launcherPath = scratch.path("large");
    FileIndexEntry entry;
    entry.name = "copy";
    entry.length = fileSize;
    const std::filesystem::path target = scratch.native("out/copy");
    const auto checked = [&](bool wellDone) {
        if (!wellDone || std::filesystem::file_size(target) != fileSize)
            state.SkipWithError("the copy failed");
    };
    const auto theirs = [&] {
        copy(scratch.native("large").string(), target.string());
        checked(true);
    };
    compare(state, {against, [&] { checked(!entry.extract(scratch.path("out")).empty()); }, theirs,
                    [&] { std::filesystem::remove(target); }, goal});
}

void extractionAndLoop(benchmark::State& state) {
    extraction(state, "reads and writes of 64 KiB", std::bind_front(copyPlainly, 65536), "1.05");
}
BENCHMARK(extractionAndLoop)->Name("extraction of 256 MiB")->Iterations(5)->UseManualTime();

void extractionAndOurBlocks(benchmark::State& state) {
    extraction(state, "reads and writes of 61439 bytes", std::bind_front(copyPlainly, 61439));
}
BENCHMARK(extractionAndOurBlocks)
    ->Name("the same beside its own block size")
    ->Iterations(5)
    ->UseManualTime();

void extractionAndCp(benchmark::State& state) {
    extraction(state, "cp", [](const std::string& from, const std::string& to) {
        if (std::system(("cp " + from + " " + to).c_str()) != 0)
            std::filesystem::remove(to);
    });
}
BENCHMARK(extractionAndCp)->Name("the same beside cp")->Iterations(5)->UseManualTime();

}  // namespace

}  // namespace corvane::bench
