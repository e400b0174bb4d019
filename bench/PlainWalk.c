// The plain walk of a Windows program: prints the path of each java.exe. Usage: bench_plain_walk
// DIRECTORY.
#include <stdio.h>
#include <string.h>
#include <windows.h>

static void walk(char* path, size_t length) {
    WIN32_FIND_DATAA entry;
    strcpy(path + length, "\\*");
    const HANDLE search =
        FindFirstFileExA(path, FindExInfoBasic, &entry, FindExSearchNameMatch, NULL, 0);
    if (search == INVALID_HANDLE_VALUE)
        return;
    do {
        const size_t size = strlen(entry.cFileName);
        if (length + size + 4 > 4096 || strcmp(entry.cFileName, ".") == 0 ||
            strcmp(entry.cFileName, "..") == 0)
            continue;
        path[length] = '\\';
        strcpy(path + length + 1, entry.cFileName);
        if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
            walk(path, length + 1 + size);
        else if (_stricmp(entry.cFileName, "java.exe") == 0)
            puts(path);
    } while (FindNextFileA(search, &entry));
    FindClose(search);
}

int main(int argc, char** argv) {
    static char path[4096];
    if (argc != 2 || strlen(argv[1]) > 100)
        return 2;
    strcpy(path, argv[1]);
    walk(path, strlen(path));
    return 0;
}
