// Stands for a JVM's java.exe: a child that the test holds for as long as it looks at the windows.
// The n-th start makes the file `started.n` beside its home, waits for a file `go.n` and obeys its
// lines: `out TEXT`, `err TEXT`, `exit NUMBER`.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>

#include "support/Wait.h"

namespace {

namespace fs = std::filesystem;

// Takes the next number that is free, and gives the file with the orders.
fs::path takeTurn(const fs::path& directory) {
    int turn = 1;
    while (fs::exists(directory / ("started." + std::to_string(turn))))
        ++turn;
    std::ofstream{directory / ("started." + std::to_string(turn))};
    return directory / ("go." + std::to_string(turn));
}

int obey(std::ifstream orders) {
    int exitValue = 0;
    for (std::string word, text; orders >> word && std::getline(orders >> std::ws, text);) {
        if (word == "exit")
            exitValue = std::atoi(text.c_str());
        else
            std::fputs((text + "\n").c_str(), word == "err" ? stderr : stdout);
    }
    return exitValue;
}

}  // namespace

int main() {
    constexpr int abandoned = 99;
    const char* const home = std::getenv("JAVA_HOME");
    if (home == nullptr)
        return abandoned;
    const fs::path orders = takeTurn(fs::path(home).parent_path());
    // A file that has just got its name can still be out of reach for a moment.
    std::ifstream stream;
    const auto released = [&] {
        stream.open(orders);
        return stream.is_open();
    };
    return corvane::test::waitFor(released, std::chrono::minutes(1)) ? obey(std::move(stream))
                                                                     : abandoned;
}
