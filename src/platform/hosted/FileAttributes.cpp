// Attributes of files, and making and removing them.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/FileOperations.h"
#include "platform/hosted/Handles.h"
#include "platform/hosted/Paths.h"

using namespace corvane::hosted;

namespace {

// An entry of a directory: a link is itself and not what it leads to.
struct Entry {
    std::string path;
    mode_t mode;

    bool isLink() const { return S_ISLNK(mode); }
    // Links have all rights, so a link is never read-only.
    bool isReadOnly() const { return (mode & S_IWUSR) == 0; }
    // Follows links, to their end.
    bool leadsToDirectory() const {
        struct stat target {};
        return stat(path.c_str(), &target) == 0 && S_ISDIR(target.st_mode);
    }
};

// The entry of that path; none, with the last error, if it isn't there or `operation` is to fail.
std::optional<Entry> entryFor(const char* operation, LPCSTR path) {
    const auto host = injectedFailure(operation) ? std::nullopt : hostPath(path);
    struct stat status {};
    if (host && lstat(host->c_str(), &status) != 0) {
        failForPath(*host);
        return std::nullopt;
    }
    return host ? std::optional(Entry{*host, status.st_mode}) : std::nullopt;
}

// The result of a host operation on an entry.
BOOL done(const Entry& entry, int result) {
    return result == 0 ? TRUE : failForPath(entry.path);
}

// Whether CreateFileA holds a file somewhere. One that can't be opened to find out isn't held.
bool isHeld(const std::string& path) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    return file && flock(file.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

// Steps of 100 ns since the year 1601.
std::uint64_t windowsTime(const timespec& time) {
    constexpr std::int64_t from1601To1970 = 11'644'473'600;
    return static_cast<std::uint64_t>(time.tv_sec + from1601To1970) * 10'000'000 +
           static_cast<std::uint64_t>(time.tv_nsec) / 100;
}

}  // namespace

DWORD GetFileAttributesA(LPCSTR path) {
    const auto entry = entryFor(__func__, path);
    if (!entry) {
        return INVALID_FILE_ATTRIBUTES;
    }
    // Windows shows NORMAL only when nothing else is to be said.
    const bool directory = entry->leadsToDirectory();
    const DWORD attributes = (directory ? FILE_ATTRIBUTE_DIRECTORY : 0) |
                             (directory && entry->isLink() ? FILE_ATTRIBUTE_REPARSE_POINT : 0) |
                             (entry->isReadOnly() ? FILE_ATTRIBUTE_READONLY : 0);
    return attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL;
}

BOOL GetFileAttributesExA(LPCSTR path, int kind, LPVOID information) {
    const auto entry = entryFor(__func__, path);
    if (!entry) {
        return FALSE;
    }
    if (kind != GetFileExInfoStandard) {
        return fail(ERROR_INVALID_PARAMETER);
    }
    struct stat status {};
    if (stat(entry->path.c_str(), &status) != 0) {
        return failForPath(entry->path);
    }
    const auto size = static_cast<std::uint64_t>(status.st_size);
    const std::uint64_t time = windowsTime(status.st_mtim);
    *static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(information) = {
        GetFileAttributesA(path),
        {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)},
        static_cast<DWORD>(size >> 32),
        static_cast<DWORD>(size)};
    return TRUE;
}

// Setting the mark takes the right to write from all, as the mark knows no users; clearing it gives
// it back to the owner alone.
BOOL SetFileAttributesA(LPCSTR path, DWORD attributes) {
    const auto entry = entryFor(__func__, path);
    if (!entry) {
        return FALSE;
    }
    constexpr mode_t allWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    const bool readOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    // Who sets the mark of a link must not change the file that it leads to.
    if (entry->isLink() || readOnly == entry->isReadOnly()) {
        return TRUE;
    }
    const mode_t mode = readOnly ? entry->mode & ~allWrite : entry->mode | S_IWUSR;
    return done(*entry, chmod(entry->path.c_str(), mode & 07777));
}

BOOL CreateDirectoryA(LPCSTR path, LPSECURITY_ATTRIBUTES /*security*/) {
    const auto host = injectedFailure(__func__) ? std::nullopt : hostPath(path);
    if (!host) {
        return FALSE;
    }
    // The launcher makes directories for itself alone.
    if (mkdir(host->c_str(), 0700) == 0) {
        return TRUE;
    }
    // What is missing here is a directory on the way.
    switch (errno) {
        case EEXIST:
            return fail(ERROR_ALREADY_EXISTS);
        case ENOENT:
            return fail(ERROR_PATH_NOT_FOUND);
        default:
            return failWithErrno();
    }
}

// A link to a directory goes like a directory, and what it leads to stays.
BOOL RemoveDirectoryA(LPCSTR path) {
    const auto entry = entryFor(__func__, path);
    if (!entry) {
        return FALSE;
    }
    if (!entry->leadsToDirectory()) {
        return fail(ERROR_DIRECTORY);
    }
    if (entry->isLink()) {
        return done(*entry, unlink(entry->path.c_str()));
    }
    const int result = rmdir(entry->path.c_str());
    // Some file systems say "exists" of a directory that isn't empty.
    return result != 0 && errno == EEXIST ? fail(ERROR_DIR_NOT_EMPTY) : done(*entry, result);
}

// The host would remove what is marked read-only and what somebody holds; Windows doesn't.
BOOL DeleteFileA(LPCSTR path) {
    const auto entry = entryFor(__func__, path);
    if (!entry) {
        return FALSE;
    }
    if (entry->leadsToDirectory() || entry->isReadOnly()) {
        return fail(ERROR_ACCESS_DENIED);
    }
    if (S_ISREG(entry->mode) && isHeld(entry->path)) {
        return fail(ERROR_SHARING_VIOLATION);
    }
    return done(*entry, unlink(entry->path.c_str()));
}

// Nobody would remember the order until the next start of the host.
BOOL MoveFileExA(LPCSTR from, LPCSTR to, DWORD flags) {
    const auto entry = entryFor(__func__, from);
    if (!entry) {
        return FALSE;
    }
    if (flags != 0) {
        return fail(ERROR_NOT_SUPPORTED);
    }
    const auto target = hostPath(to);
    struct stat status {};
    if (!target || lstat(target->c_str(), &status) == 0) {
        return target ? fail(ERROR_ALREADY_EXISTS) : FALSE;
    }
    return rename(entry->path.c_str(), target->c_str()) == 0 ? TRUE : failForPath(*target);
}
