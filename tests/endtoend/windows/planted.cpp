// A library that lies beside a launcher under the name of one of Windows' own, and leaves a file
// when it is loaded.
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void*);
BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void*) {
    if (reason != DLL_PROCESS_ATTACH)
        return TRUE;
    char name[MAX_PATH] = "";
    GetModuleFileNameA(library, name, MAX_PATH - 8);
    lstrcatA(name, ".loaded");
    CloseHandle(CreateFileA(name, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    return TRUE;
}
