// The last error and its sources.
#include "platform/hosted/Errors.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

namespace {

DWORD lastError = 0;

// A host error number and what Windows calls the same.
struct ErrorPair {
    int host;
    DWORD windows;
};

// For the way back from a Windows code the first row counts.
constexpr ErrorPair errorPairs[] = {
    {ENOENT, ERROR_FILE_NOT_FOUND},
    {ENOTDIR, ERROR_PATH_NOT_FOUND},
    {EMFILE, ERROR_TOO_MANY_OPEN_FILES},
    {ENFILE, ERROR_TOO_MANY_OPEN_FILES},
    {EACCES, ERROR_ACCESS_DENIED},
    {EPERM, ERROR_ACCESS_DENIED},
    {EISDIR, ERROR_ACCESS_DENIED},
    {EBADF, ERROR_INVALID_HANDLE},
    {ENOMEM, ERROR_NOT_ENOUGH_MEMORY},
    {EXDEV, ERROR_NOT_SAME_DEVICE},
    {EROFS, ERROR_WRITE_PROTECT},
    {ENXIO, ERROR_NOT_READY},
    {ENODEV, ERROR_NOT_READY},
    {EBUSY, ERROR_SHARING_VIOLATION},
    {ETXTBSY, ERROR_SHARING_VIOLATION},
    {EEXIST, ERROR_FILE_EXISTS},
    {EINVAL, ERROR_INVALID_PARAMETER},
    {EPIPE, ERROR_BROKEN_PIPE},
    {ENOSPC, ERROR_DISK_FULL},
    {EDQUOT, ERROR_DISK_FULL},
    {ENOTEMPTY, ERROR_DIR_NOT_EMPTY},
    {ENOEXEC, ERROR_BAD_EXE_FORMAT},
    {ENAMETOOLONG, ERROR_FILENAME_EXCED_RANGE},
    {E2BIG, ERROR_FILENAME_EXCED_RANGE},
    {EFBIG, ERROR_FILE_TOO_LARGE},
    {EIO, ERROR_IO_DEVICE},
    {EAGAIN, ERROR_NO_SYSTEM_RESOURCES},
    {ELOOP, ERROR_CANT_RESOLVE_FILENAME},
};

}  // namespace

DWORD GetLastError() {
    return lastError;
}
void SetLastError(DWORD code) {
    lastError = code;
}

namespace corvane::hosted {

DWORD windowsCode(int error) noexcept {
    for (const ErrorPair& pair : errorPairs) {
        if (pair.host == error) {
            return pair.windows;
        }
    }
    return ERROR_GEN_FAILURE;
}

int hostError(DWORD code) noexcept {
    for (const ErrorPair& pair : errorPairs) {
        if (pair.windows == code) {
            return pair.host;
        }
    }
    return EIO;
}

BOOL fail(DWORD code) noexcept {
    SetLastError(code);
    return FALSE;
}

BOOL failWithErrno() noexcept {
    return fail(windowsCode(errno));
}

// The host says ENOENT for both: whether the parent is there tells them apart.
BOOL failForPath(const std::string& hostPath) noexcept {
    if (errno != ENOENT) {
        return failWithErrno();
    }
    const std::size_t end = hostPath.find_last_not_of('/');
    const std::size_t slash = hostPath.rfind('/', end);
    struct stat status {};
    const bool parentExists = slash == std::string::npos || slash == 0 ||
                              stat(hostPath.substr(0, slash).c_str(), &status) == 0;
    return fail(parentExists ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND);
}

DWORD giveText(const std::string& text, LPSTR buffer, DWORD size) noexcept {
    const DWORD length = static_cast<DWORD>(text.size());
    if (buffer == nullptr || size <= length) {
        return length + 1;
    }
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return length;
}

}  // namespace corvane::hosted
