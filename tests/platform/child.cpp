// The program that the process tests start: native on each build, it does what its first argument
// says and shows what reached it.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace {

void printArguments(int count, char** arguments) {
    for (int i = 0; i < count; ++i)
        std::printf("[%s]", arguments[i]);
}

void printVariable(const char* name) {
    const char* value = std::getenv(name);
    std::printf("%s", value == nullptr ? "(unset)" : value);
}

// As many bytes to each of the two streams.
void writeBytes(int count) {
    for (int i = 0; i < count; ++i) {
        std::putc('a' + i % 26, stdout);
        std::putc('A' + i % 26, stderr);
    }
}

}  // namespace

int main(int argc, char** argv) {
#ifdef _WIN32
    _setmode(_fileno(stdout), _O_BINARY);
#endif
    const std::string command = argc > 1 ? argv[1] : "";
    const int number = argc > 2 ? std::atoi(argv[2]) : 0;
    if (command == "args") {
        printArguments(argc - 2, argv + 2);
    } else if (command == "self") {
        printArguments(1, argv);
    } else if (command == "env") {
        printVariable(argv[2]);
    } else if (command == "write") {
        writeBytes(number);
    } else if (command == "touch") {
        std::fclose(std::fopen(argv[2], "w"));
    } else if (command == "sleep") {
        std::this_thread::sleep_for(std::chrono::milliseconds(number));
    } else if (command == "abort") {
        std::abort();
    } else if (command == "exit") {
        return number;
    }
    return 0;
}
