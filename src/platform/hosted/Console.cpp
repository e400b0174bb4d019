// Standard output and input on the host, where a terminal, too, reads and gives UTF-8.
#include "platform/Platform.h"

namespace corvane {

void joinConsole() {}

void writeOutput(const char* text) {
    std::fputs(text, stdout);
    std::fflush(stdout);
}

void writeErrorOutput(const char* text) {
    std::fputs(text, stderr);
}

int readInput() {
    return std::getchar();
}

}  // namespace corvane
