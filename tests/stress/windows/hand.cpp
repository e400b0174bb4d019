// A virus scanner's hand: opens each file that comes into being below a directory, so that nobody
// else can, and lets go of it a second later. Batch files are spared: the command processor opens
// one anew for each line and ends when it can't. Ends when the file STOP is there.
// Usage: hand DIRECTORY STOP
#include <windows.h>

#include <chrono>
#include <filesystem>
#include <list>
#include <set>

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

struct Grip {
    HANDLE file;
    Clock::time_point start;
};

std::list<Grip> grips;
std::set<fs::path> seen;

// What somebody has open is tried again.
void take(const fs::path& path) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return;
    seen.insert(path);
    grips.push_back({file, Clock::now()});
}

void look(const fs::path& directory) {
    std::error_code error;
    for (fs::recursive_directory_iterator entry(directory, error), end; entry != end && !error;
         entry.increment(error)) {
        if (!entry->is_directory(error) && entry->path().extension() != ".bat" &&
            !seen.contains(entry->path()))
            take(entry->path());
    }
}

void letGo() {
    while (!grips.empty() && Clock::now() - grips.front().start > std::chrono::seconds(1)) {
        CloseHandle(grips.front().file);
        grips.pop_front();
    }
}

}  // namespace

int main(int, char** arguments) {
    while (!fs::exists(arguments[2])) {
        look(arguments[1]);
        letGo();
        Sleep(2);
    }
    return 0;
}
