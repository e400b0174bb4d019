// Windows' operations on files, directories and drives. Paths are Windows paths or absolute host
// paths (contract.md); an operation that fails leaves its code with GetLastError.
#pragma once

#include "platform/hosted/WindowsConstants.h"

// Opens a file, alone among those that this layer opened in any process: error 32 otherwise. Error
// 5 for a directory; INVALID_HANDLE_VALUE on failure. The dispositions are OPEN_EXISTING and
// OPEN_ALWAYS, which makes a missing file; share mode, security and template are ignored.
HANDLE CreateFileA(LPCSTR path, DWORD access, DWORD shareMode, LPSECURITY_ATTRIBUTES security,
                   DWORD disposition, DWORD flags, HANDLE templateFile);
// Closes what CreateFileA, CreatePipe, CreateProcessA or CreateFileMappingA gave.
BOOL CloseHandle(HANDLE handle);

// The low 32 bits of the size in bytes, the rest through `high` unless it is null.
DWORD GetFileSize(HANDLE file, LPDWORD high);
// Moves the position to `distance` bytes behind FILE_BEGIN; `high` must be null.
DWORD SetFilePointer(HANDLE file, LONG distance, PLONG high, DWORD origin);
// Cuts or grows the file to its position.
BOOL SetEndOfFile(HANDLE file);

// Makes a file mappable, growing it to the given size; size 0 takes the file's own.
HANDLE CreateFileMappingA(HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protection,
                          DWORD sizeHigh, DWORD sizeLow, LPCSTR name);
// All the mapped bytes, or null; offset and count must be 0. Ended by UnmapViewOfFile.
LPVOID MapViewOfFile(HANDLE mapping, DWORD access, DWORD offsetHigh, DWORD offsetLow, SIZE_T count);
BOOL UnmapViewOfFile(LPCVOID view);

// The directory bit follows symbolic links; a link itself is never read-only.
DWORD GetFileAttributesA(LPCSTR path);
// Attributes, size and time of the last change, of what a link leads to. The record must be a
// WIN32_FILE_ATTRIBUTE_DATA.
BOOL GetFileAttributesExA(LPCSTR path, int kind, LPVOID information);
// Sets or clears the read-only bit, the only one that can be changed.
BOOL SetFileAttributesA(LPCSTR path, DWORD attributes);
BOOL CreateDirectoryA(LPCSTR path, LPSECURITY_ATTRIBUTES security);
// Removes an empty directory, or a link to a directory.
BOOL RemoveDirectoryA(LPCSTR path);
// Removes a file or a link that isn't marked read-only (error 5) nor held by CreateFileA (error
// 32).
BOOL DeleteFileA(LPCSTR path);
// Renames a file or directory unless something is there by the new name: error 183. With flags it
// would move it at the next start of the system, which can't be ordered here: error 50.
BOOL MoveFileExA(LPCSTR from, LPCSTR to, DWORD flags);

// Lists a directory; the last component of the pattern must be "*" (else error 87). Of `data` only
// the name and the directory bit are filled in.
HANDLE FindFirstFileA(LPCSTR pattern, LPWIN32_FIND_DATAA data);
BOOL FindNextFileA(HANDLE find, LPWIN32_FIND_DATAA data);
BOOL FindClose(HANDLE find);

// Roots of the drives in alphabetical order, each NUL-terminated, and one more NUL.
DWORD GetLogicalDriveStringsA(DWORD size, LPSTR buffer);
// DRIVE_NO_ROOT_DIR for what isn't a drive of the system.
UINT GetDriveTypeA(LPCSTR root);
// Sizes in clusters, cut to 32 bits; error 3 for a drive that isn't mapped.
BOOL GetDiskFreeSpaceA(LPCSTR root, LPDWORD sectorsPerCluster, LPDWORD bytesPerSector,
                       LPDWORD freeClusters, LPDWORD totalClusters);
// The current drive as a number, 1 for A.
int _getdrive();

// These four give the length of the text, or the size needed, with the terminator, if the buffer is
// too small; 0 on failure. The temporary path ends in a backslash and may not exist.
DWORD GetTempPathA(DWORD size, LPSTR buffer);
// The path made absolute, with "." and ".." resolved as text; it need not exist.
DWORD GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR* name);
DWORD GetShortPathNameA(LPCSTR path, LPSTR buffer, DWORD size);
UINT GetWindowsDirectoryA(LPSTR buffer, UINT size);
DWORD GetEnvironmentVariableA(LPCSTR name, LPSTR buffer, DWORD size);
// Writes a free name of the form PREhhhh.tmp into `buffer` (MAX_PATH bytes), creates the file and
// gives the number. `unique` must be 0.
UINT GetTempFileNameA(LPCSTR directory, LPCSTR prefix, UINT unique, LPSTR buffer);
