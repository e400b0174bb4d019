// The collecting of a child's output, the prescribed pauses apart, against a loop that keeps the
// text in one growing block: rows of bench/run's table. A program of its own, since Wine can run
// it, too; it is its own child. Usage: bench_collect MEGABYTES... | bench_collect --write BYTES
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "host/Paths.h"
#include "platform/Platform.h"
#include "process/ProcessRunner.h"
#include "support/TestContext.h"

namespace {

DWORD sleptMs = 0;

}  // namespace

// The launcher's pauses are counted, so that they can be told apart. Windows' function is called
// through the pointer that its import library would bring; the host's is wrapped by the linker.
extern "C" {
#ifdef _WIN32
static void WINAPI countedSleep(DWORD milliseconds) {
    sleptMs += milliseconds;
    SleepEx(milliseconds, FALSE);
}
void(WINAPI* __imp_Sleep)(DWORD) = countedSleep;
#else
void realSleep(DWORD milliseconds) __asm__("__real__Z5Sleepj");
void countedSleep(DWORD milliseconds) __asm__("__wrap__Z5Sleepj");
void countedSleep(DWORD milliseconds) {
    sleptMs += milliseconds;
    realSleep(milliseconds);
}
#endif
}

namespace corvane::bench {

namespace {

constexpr std::size_t million = 1'000'000;

int writeOutput(std::size_t bytes) {
    const std::string block(4096, 'x');
    while (bytes > 0) {
        const std::size_t size = std::min(bytes, block.size());
        std::fwrite(block.data(), 1, size, stdout);
        bytes -= size;
    }
    return 0;
}

std::string childLine(std::size_t bytes) {
    return "\"" + std::string(modulePath().cstr()) + "\" --write " + std::to_string(bytes);
}

void collect(std::size_t bytes) {
    String out;
    ProcessOptions options;
    options.collect = true;
    runCommand(childLine(bytes).c_str(), String(), options, &out);
}

// Waits for its data as long as need be, and keeps it in blocks of the same size.
void readPlainly(std::size_t bytes) {
    HandleGuard readEnd;
    HandleGuard writeEnd;
    SECURITY_ATTRIBUTES inheritable{};
    inheritable.nLength = sizeof inheritable;
    inheritable.bInheritHandle = TRUE;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    CreatePipe(readEnd.put(), writeEnd.put(), &inheritable, 0);
    startup.hStdOutput = writeEnd.get();
    PROCESS_INFORMATION child{};
    std::string line = childLine(bytes);
    CreateProcessA(nullptr, line.data(), &inheritable, &inheritable, TRUE, CREATE_NO_WINDOW,
                   nullptr, nullptr, &startup, &child);
    const HandleGuard process(child.hProcess);
    const HandleGuard thread(child.hThread);
    writeEnd.reset();
    std::string text;
    char block[4096];
    DWORD size = 0;
    while (ReadFile(readEnd.get(), block, sizeof block, &size, nullptr) && size > 0)
        text.append(block, size);
}

// Nanoseconds without the pauses.
template <class Action>
double timeOf(Action action) {
    using Clock = std::chrono::steady_clock;
    sleptMs = 0;
    const auto start = Clock::now();
    action();
    const std::chrono::duration<double, std::nano> taken = Clock::now() - start;
    return taken.count() - 1e6 * sleptMs;
}

void printRow(std::size_t megabytes) {
    const std::size_t bytes = megabytes * million;
    double ours = 0;
    double theirs = 0;
    // The pauses make the large ones long under Wine.
    const int rounds = megabytes < 64 ? 3 : 1;
    for (int i = 0; i < rounds; ++i) {
        ours += timeOf([&] { collect(bytes); }) / rounds;
        theirs += timeOf([&] { readPlainly(bytes); }) / rounds;
    }
    const auto perByte = [&](double time) { return time / static_cast<double>(bytes); };
    std::printf(
        "collecting %d MB\t%.2f ns/B\t%.2f ns/B, a loop with one growing block\t%.2f\t1.00\n",
        static_cast<int>(megabytes), perByte(ours), perByte(theirs), ours / theirs);
    std::fflush(stdout);
}

}  // namespace

}  // namespace corvane::bench

int main(int argc, char** argv) {
    if (argc == 3 && std::strcmp(argv[1], "--write") == 0)
        return corvane::bench::writeOutput(std::strtoul(argv[2], nullptr, 10));
    const corvane::test::TestContext run;
    for (int i = 1; i < argc; ++i)
        corvane::bench::printRow(std::strtoul(argv[i], nullptr, 10));
    return 0;
}
