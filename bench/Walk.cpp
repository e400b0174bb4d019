// One disk walk as a program: prints the path of each java.exe, as `find` does. Usage: bench_walk
// DRIVE, with the drive as "T:". It must be the only one that a search would walk.
#include <cstdio>

#include "jvmsearch/DiskSearch.h"
#include "support/TestContext.h"

using namespace corvane;

namespace {

class Printer final : public ExecutableHandler {
  public:
    bool onExecutableFound(const String& path) override {
        std::puts(path.cstr());
        return false;
    }
};

bool isOnlyDrive(const char* drive) {
    StringList drives;
    listSearchDrives(drives);
    return drives.count() == 1 && drives.at(0) == drive;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 || !isOnlyDrive(argv[1])) {
        std::fprintf(stderr, "usage: bench_walk DRIVE, the only drive to search\n");
        return 2;
    }
    const test::TestContext run;
    StringList suffixes;
    suffixes.add("java.exe");
    Printer printer;
    scanDrives(suffixes, printer);
    return 0;
}
