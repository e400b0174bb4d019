// The time that programs take from their start to their end, in turn: prints the medians in
// seconds. Usage: bench_start TIMES "COMMAND LINE"...
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/Platform.h"

namespace {

// Seconds; negative if the program can't be started.
double secondsOf(std::string commandLine) {
    const auto start = std::chrono::steady_clock::now();
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION child{};
    if (!CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &child))
        return -1;
    const corvane::HandleGuard process(child.hProcess);
    const corvane::HandleGuard thread(child.hThread);
    WaitForSingleObject(process.get(), INFINITE);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::vector<double>> times(argc < 3 ? 0 : static_cast<std::size_t>(argc) - 2);
    for (int round = argc < 3 ? 0 : std::atoi(argv[1]); round > 0; --round) {
        for (std::size_t i = 0; i < times.size(); ++i)
            times[i].push_back(secondsOf(argv[i + 2]));
    }
    for (std::vector<double>& each : times) {
        std::sort(each.begin(), each.end());
        std::printf("%.6f\n", each.empty() ? -1 : each[each.size() / 2]);
    }
    return times.empty() ? 2 : 0;
}
