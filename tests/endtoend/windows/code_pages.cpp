// An application that shows which code pages its console has.
#include <windows.h>

#include <cstdio>

int main() {
    std::printf("Code pages %u and %u\n", GetConsoleCP(), GetConsoleOutputCP());
}
