// The places that the system names: temporary directory, temporary names, Windows directory.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/FileOperations.h"
#include "platform/hosted/Handles.h"
#include "platform/hosted/Paths.h"

using namespace corvane::hosted;

namespace {

constexpr UINT numberCount = 0x10000;

// Where the host's programs put their temporary files, with a trailing backslash.
std::string tempPath() {
    const char* set = std::getenv("TMPDIR");
    const std::string host = set == nullptr || *set == '\0' ? "/tmp" : absoluteHostPath(set);
    std::string path = windowsPath(normalPath("", host));
    return path.back() == '\\' ? path : path + "\\";
}

bool isDirectory(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// `directory`, a separator, at most three characters of the prefix, the number, ".tmp".
std::string tempName(const std::string& directory, LPCSTR prefix, UINT number) {
    // Long enough for any prefix, of which three characters count, and any number.
    char name[32];
    std::snprintf(name, sizeof name, "%.3s%X.tmp", prefix, number);
    const char last = directory.back();
    return directory + (last == '\\' || last == '/' ? "" : "\\") + name;
}

// Where the search for a free number starts: elsewhere for each process and each call.
UINT startNumber() {
    const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
    return static_cast<UINT>(ticks ^ (ticks >> 16) ^ getpid());
}

// Creates the first free file behind `start`; 0 with the last error if none can be created.
UINT createFreeFile(const std::string& directory, LPCSTR prefix, UINT start, std::string& path) {
    for (UINT i = 0; i < numberCount; ++i) {
        const UINT number = (start + i) % numberCount;
        if (number == 0) {
            continue;  // would read as a failure
        }
        path = tempName(directory, prefix, number);
        const auto host = hostPath(path.c_str());
        if (!host) {
            return 0;
        }
        // Only the owner has business with a temporary file.
        if (openHostFile(*host, O_WRONLY | O_CREAT | O_EXCL, 0600)) {
            return number;
        }
        if (errno != EEXIST) {
            failWithErrno();
            return 0;
        }
    }
    fail(ERROR_FILE_EXISTS);
    return 0;
}

}  // namespace

DWORD GetTempPathA(DWORD size, LPSTR buffer) {
    return injectedFailure(__func__) ? 0 : giveText(tempPath(), buffer, size);
}

UINT GetTempFileNameA(LPCSTR directory, LPCSTR prefix, UINT unique, LPSTR buffer) {
    if (injectedFailure(__func__)) {
        return 0;
    }
    const auto host = hostPath(directory);
    if (!host || !isDirectory(*host)) {
        fail(ERROR_DIRECTORY);
        return 0;
    }
    // Windows keeps 14 bytes for separator, name and terminator.
    if (std::strlen(directory) > MAX_PATH - 14) {
        fail(ERROR_BUFFER_OVERFLOW);
        return 0;
    }
    if (unique != 0) {
        fail(ERROR_INVALID_PARAMETER);
        return 0;
    }
    std::string path;
    const UINT number = createFreeFile(directory, prefix, startNumber(), path);
    if (number != 0) {
        std::memcpy(buffer, path.c_str(), path.size() + 1);
    }
    return number;
}

// An absolute host path is one already.
DWORD GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR* /*name*/) {
    const auto host = injectedFailure(__func__) ? std::nullopt : hostPath(path);
    if (!host) {
        return 0;
    }
    const std::string full = *path == '/' ? path : windowsPath(absoluteHostPath(*host));
    return giveText(full, buffer, size);
}

// As on Windows, only what exists has a short name.
DWORD GetShortPathNameA(LPCSTR path, LPSTR buffer, DWORD size) {
    const auto host = injectedFailure(__func__) ? std::nullopt : hostPath(path);
    if (!host) {
        return 0;
    }
    // The host has no short names: each path is its own.
    if (access(host->c_str(), F_OK) != 0) {
        failForPath(*host);
        return 0;
    }
    return giveText(path, buffer, size);
}

// The host has no such directory. Windows' own variable names one where it is needed; else the
// temporary directory takes what is written there.
UINT GetWindowsDirectoryA(LPSTR buffer, UINT size) {
    if (injectedFailure(__func__)) {
        return 0;
    }
    const char* set = std::getenv("windir");
    const std::string temporary = tempPath();
    return giveText(
        set != nullptr && *set != '\0' ? set : temporary.substr(0, temporary.size() - 1), buffer,
        size);
}
