// A child that says when it started: writes the system's steady clock in nanoseconds to the file
// that CORVANE_BENCH_STAMP names.
#include <stdio.h>
#include <stdlib.h>

#include "SteadyClock.h"

int main(void) {
    const long long now = steadyNanoseconds();
    FILE* file = fopen(getenv("CORVANE_BENCH_STAMP"), "w");
    if (file == NULL)
        return 1;
    fprintf(file, "%lld\n", now);
    return fclose(file);
}
