/* The clock that all processes of the machine share, for times from one process to another. */
#pragma once

#ifdef _WIN32
#include <windows.h>
static long long steadyNanoseconds(void) {
    LARGE_INTEGER ticks, perSecond;
    QueryPerformanceCounter(&ticks);
    QueryPerformanceFrequency(&perSecond);
    return (long long)((double)ticks.QuadPart * 1e9 / (double)perSecond.QuadPart);
}
#else
#include <time.h>
static long long steadyNanoseconds(void) {
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1000000000LL + now.tv_nsec;
}
#endif
