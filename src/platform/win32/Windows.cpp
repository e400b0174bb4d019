// Our own operations on Windows, where its own library does all the work.
#include <cerrno>
#include <cstdlib>

#include "platform/Platform.h"

namespace corvane {

std::FILE* openStream(const char* path, const char* mode) {
    return std::fopen(path, mode);
}

// The library says ENOSPC also of a write that wrote too little, for which the system has no code.
StreamError lastStreamError() {
    const int number = errno;
    return {number, number == ENOSPC ? ERROR_DISK_FULL : static_cast<unsigned>(_doserrno)};
}

// Windows knows a program by its name.
bool makeExecutable(const char* /*path*/) {
    return true;
}

DWORD finalPath(const char* path, LPSTR buffer, DWORD size) {
    constexpr DWORD anybodyMay = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const FileGuard file(CreateFileA(path, 0, anybodyMay, nullptr, OPEN_EXISTING,
                                     FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    const DWORD length = file ? GetFinalPathNameByHandleA(file.get(), buffer, size, 0) : 0;
    return length < size ? length : 0;
}

void restrictLibraryLoading() {
    using Restrict = BOOL(WINAPI*)(DWORD);
    void* const found = reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleA("kernel32.dll"), "SetDefaultDllDirectories"));
    if (found != nullptr)
        reinterpret_cast<Restrict>(found)(LOAD_LIBRARY_SEARCH_SYSTEM32);
}

void forEachPlatformJvmPath(TextTaker /*take*/) {}

}  // namespace corvane
