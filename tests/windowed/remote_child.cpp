// Stands for a JVM's java.exe: a child that the test holds for as long as it looks at the windows.
// The n-th start makes the file `started.n` beside its home, waits for a file `go.n` and obeys its
// lines: `out TEXT`, `err TEXT`, `exit NUMBER`.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace {

namespace fs = std::filesystem;

constexpr int abandoned = 99;
constexpr std::chrono::seconds patience{60};

// Takes the next number that is free.
fs::path takeTurn(const fs::path& directory) {
    for (int turn = 1;; ++turn) {
        const fs::path started = directory / ("started." + std::to_string(turn));
        if (fs::exists(started))
            continue;
        std::ofstream{started};
        return directory / ("go." + std::to_string(turn));
    }
}

int obey(std::ifstream& stream) {
    int exitValue = 0;
    for (std::string word, text; stream >> word && std::getline(stream >> std::ws, text);) {
        if (word == "exit")
            exitValue = std::atoi(text.c_str());
        else
            std::fputs((text + "\n").c_str(), word == "err" ? stderr : stdout);
    }
    return exitValue;
}

}  // namespace

int main() {
    const char* const home = std::getenv("JAVA_HOME");
    if (home == nullptr)
        return abandoned;
    const fs::path orders = takeTurn(fs::path(home).parent_path());
    const auto end = std::chrono::steady_clock::now() + patience;
    while (std::chrono::steady_clock::now() < end) {
        if (std::ifstream stream(orders); stream)
            return obey(stream);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return abandoned;
}
