// The way from the host's error numbers to Windows' error codes.
#pragma once

#include <string>

#include "platform/hosted/SystemOperations.h"

namespace corvane::hosted {

// Windows' code for a host error number; 31 ("not functioning") for one without an equal.
DWORD windowsCode(int error) noexcept;

// The host's error number for a Windows code, EIO for one without an equal.
int hostError(DWORD code) noexcept;

// Set the last error and give FALSE, so that a failure is one expression.
BOOL fail(DWORD code) noexcept;
BOOL failWithErrno() noexcept;

// The same for an operation on the file `hostPath`: a missing directory on the way to it is error
// 3, while the missing file itself is error 2.
BOOL failForPath(const std::string& hostPath) noexcept;

// Gives `text` as Windows gives texts into a caller's buffer: its length if it fits, else the size
// needed, with the terminator, and the buffer unchanged.
DWORD giveText(const std::string& text, LPSTR buffer, DWORD size) noexcept;

}  // namespace corvane::hosted
