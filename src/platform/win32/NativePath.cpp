// What the standard library's own file operations want to know of the system.
#include <fcntl.h>
#include <io.h>

#include "platform/Platform.h"

namespace corvane {

std::string nativePath(const char* path) {
    return path;
}

void setBinaryOutput() {
    constexpr int standardOutput = 1;
    _setmode(standardOutput, _O_BINARY);
}

}  // namespace corvane
