// Our own operations on Windows, where its own library does all the work.
#include "platform/Platform.h"

namespace corvane {

std::FILE* openStream(const char* path, const char* mode) {
    return std::fopen(path, mode);
}

// Windows knows a program by its name.
bool makeExecutable(const char* /*path*/) {
    return true;
}

std::vector<std::string> platformJvmPaths() {
    return {};
}

}  // namespace corvane
