// Windows' operations on errors, environment, module, command line, registry, texts and dialogs.
// The ANSI code page is UTF-8.
#pragma once

#include <cstdarg>

#include "platform/hosted/WindowsConstants.h"

// The code of the last failure.
DWORD GetLastError();
void SetLastError(DWORD code);

// Null removes the variable. A child gets mapped paths in what was set here in host form.
BOOL SetEnvironmentVariableA(LPCSTR name, LPCSTR value);
// A system of the NT family. The size field must be that of one of the two records: error 122.
BOOL GetVersionExA(LPOSVERSIONINFOA version);
// Path of the running program, as a Windows path; cut, with error 122, if the buffer is too small.
DWORD GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size);
// Knows the program's own module alone: `name` must be null.
HMODULE GetModuleHandleA(LPCSTR name);

// The command line as one text, quoted so that splitting it gives the host's arguments again. It
// belongs to the system.
LPSTR GetCommandLineA();
LPWSTR GetCommandLineW();
// Splits by Windows' rules. One block of pointers and texts, for GlobalFree or LocalFree.
LPWSTR* CommandLineToArgvW(LPCWSTR commandLine, int* count);
HGLOBAL GlobalHandle(LPCVOID block);
BOOL GlobalUnlock(HGLOBAL block);
HGLOBAL GlobalFree(HGLOBAL block);
HLOCAL LocalFree(HLOCAL block);
// UTF-16 to UTF-8, with the terminator: `count` must be -1, the code page CP_ACP. Size 0 asks for
// the size.
int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR wide, int count, LPSTR buffer, int size,
                        LPCSTR defaultChar, LPBOOL usedDefaultChar);

// The registry; these give their code as the result.
LSTATUS RegOpenKeyExA(HKEY parent, LPCSTR path, DWORD options, REGSAM access, PHKEY key);
LSTATUS RegQueryValueExA(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                         LPDWORD size);
// The names of the subkeys that an open key had, by their index. `keyClass` and `written` must be
// null.
LSTATUS RegEnumKeyExA(HKEY key, DWORD index, LPSTR name, LPDWORD length, LPDWORD reserved,
                      LPSTR keyClass, LPDWORD classLength, PFILETIME written);
// Opens a key for writing. It comes into being with its first value. `options` must be
// REG_OPTION_NON_VOLATILE; class, security and disposition null.
LSTATUS RegCreateKeyExA(HKEY parent, LPCSTR path, DWORD reserved, LPSTR keyClass, DWORD options,
                        REGSAM access, LPSECURITY_ATTRIBUTES security, PHKEY key,
                        LPDWORD disposition);
// Takes texts alone (REG_SZ), with their terminators.
LSTATUS RegSetValueExA(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data,
                       DWORD size);
LSTATUS RegCloseKey(HKEY key);

// A text of the string table in the user's language, cut to whole characters in size - 1 bytes;
// gives the length of what stands in the buffer. No such text: 0, and an empty text there.
int LoadStringA(void* module, UINT id, LPSTR buffer, int size);
// A pattern with its inserts filled, or the system's English text for a code. With ALLOCATE_BUFFER,
// `buffer` is the address of a pointer that receives a block for LocalFree. Gives the length; 0 on
// failure and for an empty result.
DWORD FormatMessageA(DWORD flags, LPCVOID source, DWORD id, DWORD language, LPSTR buffer,
                     DWORD size, va_list* arguments);
// Asks on standard error and reads a path from standard input. FALSE is a cancel.
BOOL GetOpenFileNameA(LPOPENFILENAMEA request);
