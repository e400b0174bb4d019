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

// Who clears the read-only mark of a link must not change the file that it leads to, so a link is
// never read-only. One that leads nowhere is a plain entry, which can be deleted.
DWORD attributesOf(const std::string& path, const struct stat& own) {
    struct stat target = own;
    const bool isLink = S_ISLNK(own.st_mode);
    if (isLink && stat(path.c_str(), &target) != 0) {
        return FILE_ATTRIBUTE_NORMAL;
    }
    // Windows shows NORMAL only when nothing else is to be said.
    const DWORD attributes =
        (S_ISDIR(target.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : 0) |
        (!isLink && (own.st_mode & S_IWUSR) == 0 ? FILE_ATTRIBUTE_READONLY : 0);
    return attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL;
}

// Follows links, to their end.
bool leadsToDirectory(const std::string& path) {
    struct stat target {};
    return stat(path.c_str(), &target) == 0 && S_ISDIR(target.st_mode);
}

// Whether CreateFileA holds a file somewhere. One that can't be opened to find out isn't held.
bool isHeld(const std::string& path) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    return file && flock(file.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

}  // namespace

DWORD GetFileAttributesA(LPCSTR path) {
    const auto host = injectedFailure(__func__) ? std::nullopt : hostPath(path);
    if (!host) {
        return INVALID_FILE_ATTRIBUTES;
    }
    struct stat status {};
    if (lstat(host->c_str(), &status) != 0) {
        failForPath(*host);
        return INVALID_FILE_ATTRIBUTES;
    }
    return attributesOf(*host, status);
}

// Setting the mark takes the right to write from all, as the mark knows no users; clearing it gives
// it back to the owner alone.
BOOL SetFileAttributesA(LPCSTR path, DWORD attributes) {
    const auto host = injectedFailure(__func__) ? std::nullopt : hostPath(path);
    if (!host) {
        return FALSE;
    }
    struct stat status {};
    if (lstat(host->c_str(), &status) != 0) {
        return failForPath(*host);
    }
    constexpr mode_t allWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    const bool readOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    const bool isReadOnly = (status.st_mode & S_IWUSR) == 0;
    // Nothing to change, or nothing that may be changed.
    if (S_ISLNK(status.st_mode) || readOnly == isReadOnly) {
        return TRUE;
    }
    const mode_t mode = readOnly ? status.st_mode & ~allWrite : status.st_mode | S_IWUSR;
    return chmod(host->c_str(), mode & 07777) == 0 ? TRUE : failForPath(*host);
}

BOOL CreateDirectoryA(LPCSTR path, LPSECURITY_ATTRIBUTES /*security*/) {
    const auto host = injectedFailure(__func__) ? std::nullopt : hostPath(path);
    if (!host) {
        return FALSE;
    }
    if (mkdir(host->c_str(), 0777) == 0) {
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
    const auto host = injectedFailure(__func__) ? std::nullopt : hostPath(path);
    if (!host) {
        return FALSE;
    }
    struct stat status {};
    if (lstat(host->c_str(), &status) != 0) {
        return failForPath(*host);
    }
    if (S_ISLNK(status.st_mode) && leadsToDirectory(*host)) {
        return unlink(host->c_str()) == 0 ? TRUE : failForPath(*host);
    }
    if (!S_ISDIR(status.st_mode)) {
        return fail(ERROR_DIRECTORY);
    }
    // Some file systems say "exists" of a directory that isn't empty.
    if (rmdir(host->c_str()) == 0) {
        return TRUE;
    }
    return errno == EEXIST ? fail(ERROR_DIR_NOT_EMPTY) : failForPath(*host);
}

// The host would remove what is marked read-only and what somebody holds; Windows doesn't.
BOOL DeleteFileA(LPCSTR path) {
    const auto host = injectedFailure(__func__) ? std::nullopt : hostPath(path);
    if (!host) {
        return FALSE;
    }
    struct stat status {};
    if (lstat(host->c_str(), &status) != 0) {
        return failForPath(*host);
    }
    const bool isLink = S_ISLNK(status.st_mode);
    if (S_ISDIR(status.st_mode) || (isLink && leadsToDirectory(*host)) ||
        (!isLink && (status.st_mode & S_IWUSR) == 0)) {
        return fail(ERROR_ACCESS_DENIED);
    }
    if (S_ISREG(status.st_mode) && isHeld(*host)) {
        return fail(ERROR_SHARING_VIOLATION);
    }
    return unlink(host->c_str()) == 0 ? TRUE : failForPath(*host);
}

// Nobody would remember the order until the next start of the host, and for renaming at once the
// launcher has no use.
BOOL MoveFileExA(LPCSTR /*from*/, LPCSTR /*to*/, DWORD /*flags*/) {
    return injectedFailure(__func__) ? FALSE : fail(ERROR_NOT_SUPPORTED);
}
