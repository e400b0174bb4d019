// The least that a program can do to start another one: `bench_spawn COMMAND...` runs it and gives
// its exit value.
#ifdef _WIN32
#include <windows.h>

#ifdef CORVANE_BENCH_WINDOW
static void showWindow(void) {
    const HWND window = CreateWindowExA(0, "STATIC", "Bench", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100,
                                        100, 300, 200, NULL, NULL, NULL, NULL);
    UpdateWindow(window);
}
#endif

int main(void) {
#ifdef CORVANE_BENCH_WINDOW
    showWindow();
#endif
    // Behind the first blank: the program's own name has none.
    char* line = GetCommandLineA();
    while (*line != '\0' && *line != ' ')
        ++line;
    while (*line == ' ')
        ++line;
    STARTUPINFOA startup = {sizeof startup};
    PROCESS_INFORMATION child;
    DWORD value = 1;
    if (!CreateProcessA(NULL, line, NULL, NULL, FALSE, 0, NULL, NULL, &startup, &child))
        return 1;
    WaitForSingleObject(child.hProcess, INFINITE);
    GetExitCodeProcess(child.hProcess, &value);
    return (int)value;
}
#else
#include <spawn.h>
#include <sys/wait.h>

extern char** environ;

int main(int argc, char** argv) {
    pid_t child = 0;
    int status = 0;
    if (argc < 2 || posix_spawn(&child, argv[1], 0, 0, argv + 1, environ) != 0 ||
        waitpid(child, &status, 0) != child)
        return 1;
    return WEXITSTATUS(status);
}
#endif
