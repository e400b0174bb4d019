// Directory listings. A walk over a whole disk is made of these: one open and one read of each
// directory, no allocation for an entry and, as a rule, no look at the entry's file.
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/FileOperations.h"
#include "platform/hosted/Paths.h"

using namespace corvane::hosted;

namespace {

// What a find handle stands for: an address, since this is the one kind of handle whose operations
// are counted in millions.
struct Listing {
    DIR* directory;
    std::string pattern;  // empty: every name
};

// "*" stands for any text, "?" for any one character.
bool matches(const char* pattern, const char* name) {
    for (; *pattern != '\0' && *pattern != '*'; ++pattern, ++name) {
        if (*name == '\0' || (*pattern != '?' && *pattern != *name)) {
            return false;
        }
    }
    if (*pattern == '\0') {
        return *name == '\0';
    }
    do {
        if (matches(pattern + 1, name)) {
            return true;
        }
    } while (*name++ != '\0');
    return false;
}

// The listing itself knows what its entries are on nearly all file systems.
bool isListedDirectory(const Listing& listing, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN) {
        // A link to a directory is none, so that no walk follows it.
        return entry.d_type == DT_DIR;
    }
    struct stat status {};
    return fstatat(dirfd(listing.directory), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISDIR(status.st_mode);
}

// The next entry that fits, or null with errno 0 at the end of the listing.
const dirent* nextEntry(const Listing& listing) {
    for (;;) {
        errno = 0;
        const dirent* entry = readdir(listing.directory);
        // The caller reads errno, which stays 0 at the end.
        if (entry == nullptr) {
            return nullptr;
        }
        // A name with a backslash can't be told from a path, so callers never see it.
        if (std::strchr(entry->d_name, '\\') == nullptr &&
            (listing.pattern.empty() || matches(listing.pattern.c_str(), entry->d_name))) {
            return entry;
        }
    }
}

// Fills in one entry; `endCode` is the error at the end of the listing.
BOOL deliverNext(const Listing& listing, WIN32_FIND_DATAA& data, DWORD endCode) {
    const dirent* entry = nextEntry(listing);
    if (entry == nullptr) {
        return errno == 0 ? fail(endCode) : failWithErrno();
    }
    data.dwFileAttributes =
        isListedDirectory(listing, *entry) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL;
    std::memcpy(data.cFileName, entry->d_name, std::strlen(entry->d_name) + 1);
    return TRUE;
}

// A missing directory is error 3, a file in its place 267.
BOOL failForListing() {
    switch (errno) {
        case ENOENT:
            return fail(ERROR_PATH_NOT_FOUND);
        case ENOTDIR:
            return fail(ERROR_DIRECTORY);
        default:
            return failWithErrno();
    }
}

// Opens the directory part of a path with a pattern; null with the last error.
DIR* openDirectoryOf(const std::string& path, std::size_t patternStart) {
    const std::string directory = patternStart == 0 ? "." : path.substr(0, patternStart);
    const auto host = hostPath(directory.c_str());
    DIR* opened = host ? opendir(host->c_str()) : nullptr;
    if (host && opened == nullptr) {
        failForListing();
    }
    return opened;
}

}  // namespace

HANDLE FindFirstFileA(LPCSTR pattern, LPWIN32_FIND_DATAA data) {
    if (injectedFailure(__func__)) {
        return INVALID_HANDLE_VALUE;
    }
    const std::string path = pattern == nullptr ? "" : pattern;
    // Without any separator this wraps to 0, the start of the text.
    const std::size_t start = path.find_last_of("\\/:") + 1;
    const std::string names = path.substr(start);
    if (names.empty()) {
        fail(path.empty() ? ERROR_PATH_NOT_FOUND : ERROR_FILE_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    DIR* opened = openDirectoryOf(path, start);
    if (opened == nullptr) {
        return INVALID_HANDLE_VALUE;
    }
    // Once for a listing, not for each entry.
    *data = {};
    // Names without a dot match "*.*" too, an old promise of Windows.
    auto* listing = new Listing{opened, names == "*" || names == "*.*" ? "" : names};
    if (!deliverNext(*listing, *data, ERROR_FILE_NOT_FOUND)) {
        closedir(opened);
        delete listing;
        return INVALID_HANDLE_VALUE;
    }
    return listing;
}

BOOL FindNextFileA(HANDLE find, LPWIN32_FIND_DATAA data) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    return deliverNext(*static_cast<const Listing*>(find), *data, ERROR_NO_MORE_FILES);
}

BOOL FindClose(HANDLE find) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    if (find == nullptr || find == INVALID_HANDLE_VALUE) {
        return fail(ERROR_INVALID_HANDLE);
    }
    auto* listing = static_cast<Listing*>(find);
    closedir(listing->directory);
    delete listing;
    return TRUE;
}
