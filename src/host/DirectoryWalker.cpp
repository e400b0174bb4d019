// The walk over a directory tree.
#include "host/DirectoryWalker.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "base/Log.h"
#include "base/Messages.h"
#include "base/RunContext.h"
#include "base/Ui.h"
#include "foundation/TextLines.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

constexpr std::uint32_t filesPerStep = 100;

bool isDotEntry(const char* name) {
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

// Goes on to the next entry and gives the system's code. A name that doesn't fit into the record,
// as one of many characters that take three bytes each, can't be told and is passed over.
DWORD nextEntry(HANDLE find, WIN32_FIND_DATAA& entry) {
    for (;;) {
        const DWORD code = FindNextFileA(find, &entry) ? ERROR_SUCCESS : GetLastError();
        if (code != ERROR_MORE_DATA)
            return code;
    }
}

// Of directories that may not be opened, are gone or empty, as most that can't be listed.
constexpr DWORD usualFailures[] = {ERROR_ACCESS_DENIED, ERROR_PATH_NOT_FOUND, ERROR_FILE_NOT_FOUND,
                                   ERROR_NO_MORE_FILES, ERROR_NOT_READY,      ERROR_DIRECTORY};

void warnIfUnreadable(const String& directory, DWORD code) {
    if (std::find(std::begin(usualFailures), std::end(usualFailures), code) !=
        std::end(usualFailures))
        return;
    logMessage("Could not read " + directory + " :  " + systemErrorText(code), LogLevel::warning);
}

}  // namespace

bool DirectoryWalker::walk(const String& root) {
    visited_.clear();
    pending_.clear();
    pending_.add(root);
    fileCount_ = 0;
    bool stopped = false;
    while (pending_.count() > 0 && !stopped && !canceled()) {
        String directory = pending_.last();
        pending_.removeAt(pending_.count() - 1);
        visited_.makeRoom();
        visited_.add(directory);
        ensureTrailingSeparator(directory);
        if (!skipDirectory(directory))
            stopped = listDirectory(directory);
    }
    return stopped;
}

bool DirectoryWalker::skipDirectory(const String&) {
    return false;
}

bool DirectoryWalker::entersLink(const String&) {
    return false;
}

bool DirectoryWalker::canceled() const noexcept {
    return cancellable_ && runContext().cancelRequested;
}

bool DirectoryWalker::listDirectory(const String& directory) {
    WIN32_FIND_DATAA entry;
    // One text serves the pattern and every entry's path, so that most entries allocate nothing.
    String path(directory.cstr(), directory.length());
    path.append('*');
    const FindGuard find(FindFirstFileA(path.cstr(), &entry));
    if (!find) {
        warnIfUnreadable(directory, GetLastError());
        return false;
    }
    for (;;) {
        if (!isDotEntry(entry.cFileName)) {
            path.erase(directory.length());
            path.append(entry.cFileName);
            if (onEntry(path, entry.dwFileAttributes))
                return true;
        }
        if (canceled())
            return false;
        const DWORD code = nextEntry(find.get(), entry);
        if (code == ERROR_NO_MORE_FILES)
            return false;
        if (code != ERROR_SUCCESS)
            throwSystemError("", code, directory);
    }
}

bool DirectoryWalker::onEntry(String& path, std::uint32_t attributes) {
    const bool isLink = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && (!isLink || entersLink(path))) {
        pending_.makeRoom();
        pending_.add(path);
        return false;
    }
    const bool stop = onFile(path);
    if (++fileCount_ % filesPerStep == 0)
        uiStepProgress(1);
    return stop;
}

}  // namespace corvane
