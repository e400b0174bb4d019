// A virus scanner's hand: opens each file that comes into being below a directory, so that nobody
// else can, and lets go of it a second later. Batch files are spared: the command processor opens
// one anew for each line and ends when it can't. Ends when the file STOP is there.
// Usage: hand DIRECTORY STOP
#include <windows.h>

#include <chrono>
#include <filesystem>
#include <list>
#include <set>
#include <vector>

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

// A directory is held no longer than it takes to list it, since that keeps others from removing it.
void look(const fs::path& directory) {
    std::error_code error;
    std::vector<fs::path> paths;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error))
        paths.push_back(entry->path());
    for (const fs::path& path : paths) {
        if (fs::is_directory(path, error))
            look(path);
        else if (path.extension() != ".bat" && !seen.contains(path))
            take(path);
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
