// Directory listings. A walk over a whole disk is made of these: one open and one read of each
// directory, no allocation for an entry and, as a rule, no look at the entry's file.
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/FileOperations.h"
#include "platform/hosted/Paths.h"

using namespace corvane::hosted;

namespace {

// A find handle is the directory itself, not a number in the table of handles, since this is the
// one kind whose operations are counted in millions.

// Whether the entry, or what it leads to as a link, is a directory.
bool isDirectory(DIR* listing, const dirent& entry, int flags) {
    struct stat status {};
    return fstatat(dirfd(listing), entry.d_name, &status, flags) == 0 && S_ISDIR(status.st_mode);
}

// The listing itself knows what its entries are on nearly all file systems, but not where links
// lead.
DWORD attributesOf(DIR* listing, const dirent& entry) {
    const bool unknown = entry.d_type == DT_UNKNOWN;
    if (entry.d_type == DT_DIR || (unknown && isDirectory(listing, entry, AT_SYMLINK_NOFOLLOW))) {
        return FILE_ATTRIBUTE_DIRECTORY;
    }
    if ((entry.d_type == DT_LNK || unknown) && isDirectory(listing, entry, 0)) {
        return FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    }
    return FILE_ATTRIBUTE_NORMAL;
}

// Fills in the next entry.
BOOL deliverNext(DIR* listing, WIN32_FIND_DATAA& data) {
    const dirent* entry = nullptr;
    do {
        errno = 0;
        entry = readdir(listing);
        // A name with a backslash can't be told from a path, so callers never see it.
    } while (entry != nullptr && std::strchr(entry->d_name, '\\') != nullptr);
    if (entry == nullptr) {
        // A directory that was removed meanwhile, as those of processes are, has no more entries.
        return errno == 0 || errno == ENOENT ? fail(ERROR_NO_MORE_FILES) : failWithErrno();
    }
    data.dwFileAttributes = attributesOf(listing, *entry);
    std::memcpy(data.cFileName, entry->d_name, std::strlen(entry->d_name) + 1);
    return TRUE;
}

// Opens the directory of a pattern, which lists all of it; null with the last error. A missing
// directory is error 3, a file in its place 267.
DIR* openDirectoryOf(const std::string& pattern) {
    // Without any separator this wraps to 0, the start of the text.
    const std::size_t start = pattern.find_last_of("\\/:") + 1;
    if (pattern.substr(start) != "*") {
        fail(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const auto host = hostPath(start == 0 ? "." : pattern.substr(0, start).c_str());
    DIR* opened = host ? opendir(host->c_str()) : nullptr;
    if (host && opened == nullptr) {
        fail(errno == ENOENT    ? ERROR_PATH_NOT_FOUND
             : errno == ENOTDIR ? ERROR_DIRECTORY
                                : windowsCode(errno));
    }
    return opened;
}

}  // namespace

HANDLE FindFirstFileA(LPCSTR pattern, LPWIN32_FIND_DATAA data) {
    DIR* listing = injectedFailure(__func__) ? nullptr : openDirectoryOf(pattern);
    if (listing != nullptr && !deliverNext(listing, *data)) {
        closedir(std::exchange(listing, nullptr));
    }
    return listing != nullptr ? listing : INVALID_HANDLE_VALUE;
}

BOOL FindNextFileA(HANDLE find, LPWIN32_FIND_DATAA data) {
    return injectedFailure(__func__) ? FALSE : deliverNext(static_cast<DIR*>(find), *data);
}

BOOL FindClose(HANDLE find) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    if (find == nullptr || find == INVALID_HANDLE_VALUE) {
        return fail(ERROR_INVALID_HANDLE);
    }
    return closedir(static_cast<DIR*>(find)) == 0 ? TRUE : failWithErrno();
}
