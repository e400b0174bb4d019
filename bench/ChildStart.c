// The time from the start of a launcher to the start of the program that it starts, bench_stamp,
// which says when that was. What the launcher does behind that, prescribed pauses among it, doesn't
// count. Usage: bench_child_start TIMES "COMMAND LINE"... prints the medians in milliseconds.
#include <stdio.h>
#include <stdlib.h>

#include "SteadyClock.h"

#ifdef _WIN32
static void run(const char* commandLine) {
    STARTUPINFOA startup = {sizeof startup};
    PROCESS_INFORMATION child;
    if (!CreateProcessA(NULL, (char*)commandLine, NULL, NULL, FALSE, 0, NULL, NULL, &startup,
                        &child))
        exit(1);
    WaitForSingleObject(child.hProcess, INFINITE);
    CloseHandle(child.hProcess);
    CloseHandle(child.hThread);
}
#else
#include <spawn.h>
#include <string.h>
#include <sys/wait.h>

extern char** environ;

static void run(const char* commandLine) {
    char line[1024];
    char* words[16] = {0};
    int count = 0;
    strncpy(line, commandLine, sizeof line - 1);
    line[sizeof line - 1] = '\0';
    for (char* word = strtok(line, " "); word != NULL && count < 15; word = strtok(NULL, " "))
        words[count++] = word;
    pid_t child = 0;
    if (posix_spawn(&child, words[0], 0, 0, words, environ) != 0 || waitpid(child, 0, 0) != child)
        exit(1);
}
#endif

static double millisecondsOf(const char* commandLine) {
    long long started = 0;
    const long long before = steadyNanoseconds();
    run(commandLine);
    FILE* file = fopen(getenv("CORVANE_BENCH_STAMP"), "r");
    if (file == NULL || fscanf(file, "%lld", &started) != 1 || started < before)
        exit(1);
    fclose(file);
    return (double)(started - before) / 1e6;
}

static int byValue(const void* left, const void* right) {
    const double a = *(const double*)left, b = *(const double*)right;
    return (a > b) - (a < b);
}

// In turn, so that what else the machine does meets all alike.
int main(int argc, char** argv) {
    const int programs = argc - 2;
    const int times = argc > 2 ? atoi(argv[1]) : 0;
    double* results = malloc(sizeof(double) * (size_t)(times * programs + 1));
    if (times <= 0 || results == NULL)
        return 2;
    for (int round = 0; round < times; ++round)
        for (int i = 0; i < programs; ++i)
            results[i * times + round] = millisecondsOf(argv[i + 2]);
    for (int i = 0; i < programs; ++i) {
        qsort(results + i * times, (size_t)times, sizeof(double), byValue);
        printf("%8.2f  %s\n", results[i * times + times / 2], argv[i + 2]);
    }
    return 0;
}
