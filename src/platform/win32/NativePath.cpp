// Paths for the standard library's own file operations.
#include "platform/Platform.h"

namespace corvane {

std::string nativePath(const char* path) {
    return path;
}

}  // namespace corvane
