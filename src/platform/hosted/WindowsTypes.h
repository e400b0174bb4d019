// Windows' types under their own names; a long of Windows has 32 bits.
#pragma once

#include <cstddef>
#include <cstdint>

using BOOL = int;
using BYTE = unsigned char;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using UINT = unsigned int;
using ULONGLONG = std::uint64_t;
using WCHAR = char16_t;
using SIZE_T = std::size_t;
using LONG_PTR = std::intptr_t;
using DWORD_PTR = std::uintptr_t;

using LPSTR = char*;
using LPCSTR = const char*;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using LPVOID = void*;
using LPCVOID = const void*;
using LPBYTE = BYTE*;
using LPBOOL = BOOL*;
using LPDWORD = DWORD*;
using PLONG = LONG*;

// As on Windows, handles of the kernel are all of one type, while modules and registry keys
// have types of their own.
using HANDLE = void*;
using HLOCAL = HANDLE;
using HGLOBAL = HANDLE;
using PHANDLE = HANDLE*;
using HMODULE = struct ModuleTag*;
using HINSTANCE = HMODULE;
using HKEY = struct KeyTag*;
using PHKEY = HKEY*;
using REGSAM = DWORD;
using LSTATUS = LONG;
using LPOVERLAPPED = struct OverlappedTag*;

// Of the records those fields that somebody uses.
struct SECURITY_ATTRIBUTES {
    DWORD nLength;
    BOOL bInheritHandle;
};
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;

struct STARTUPINFOA {
    DWORD cb;
    DWORD dwFlags;
    WORD wShowWindow;
    HANDLE hStdInput;
    HANDLE hStdOutput;
    HANDLE hStdError;
};
using LPSTARTUPINFOA = STARTUPINFOA*;

struct PROCESS_INFORMATION {
    HANDLE hProcess;
    HANDLE hThread;
    DWORD dwProcessId;
    DWORD dwThreadId;
};
using LPPROCESS_INFORMATION = PROCESS_INFORMATION*;

struct SYSTEMTIME {
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};
using LPSYSTEMTIME = SYSTEMTIME*;

struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};
using PFILETIME = FILETIME*;

struct WIN32_FILE_ATTRIBUTE_DATA {
    DWORD dwFileAttributes;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
};

struct JOBOBJECT_BASIC_LIMIT_INFORMATION {
    DWORD LimitFlags;
};
struct JOBOBJECT_EXTENDED_LIMIT_INFORMATION {
    JOBOBJECT_BASIC_LIMIT_INFORMATION BasicLimitInformation;
};

inline constexpr std::size_t MAX_PATH = 260;

struct WIN32_FIND_DATAA {
    DWORD dwFileAttributes;
    char cFileName[MAX_PATH];
};
using LPWIN32_FIND_DATAA = WIN32_FIND_DATAA*;

struct OSVERSIONINFOA {
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
};
using LPOSVERSIONINFOA = OSVERSIONINFOA*;

// Passed as a pointer to the shorter record, whose fields it begins with; the size tells which.
struct OSVERSIONINFOEXA : OSVERSIONINFOA {
    BYTE wProductType;
};

struct SRWLOCK {
    LPVOID Ptr;  // null: free
};
using PSRWLOCK = SRWLOCK*;

struct OPENFILENAMEA {
    DWORD lStructSize;
    LPCSTR lpstrFilter;
    DWORD nFilterIndex;
    LPSTR lpstrFile;
    DWORD nMaxFile;
    DWORD Flags;
};
using LPOPENFILENAMEA = OPENFILENAMEA*;
