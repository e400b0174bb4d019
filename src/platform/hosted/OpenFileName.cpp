// The dialog for opening a file, as a question on the console.
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/Paths.h"
#include "platform/hosted/SystemOperations.h"

using namespace corvane::hosted;

namespace {

// One line of standard input without its line end; empty at the end of the input.
std::string readInputLine() {
    char* line = nullptr;
    std::size_t capacity = 0;
    const ssize_t length = getline(&line, &capacity, stdin);
    std::string text = length > 0 ? line : "";
    std::free(line);
    while (text.ends_with('\n') || text.ends_with('\r')) {
        text.pop_back();
    }
    return text;
}

// Whether the user's answer names a file that is there, by either kind of path.
bool isFile(const std::string& path) {
    const auto host = hostPath(path.c_str());
    struct stat status {};
    return host && stat(host->c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

// A path with a drive stays as the user wrote it.
std::string fullWindowsPath(const std::string& path) {
    const auto host = hostPath(path.c_str());
    const bool hasDrive = path.size() > 1 && path[1] == ':';
    return hasDrive || !host ? path : windowsPath(normalPath("", absoluteHostPath(*host)));
}

// The answer, or the empty text for a cancel. Each wrong answer takes a line of the input, so the
// end of the input ends the asking.
std::string askForFile(bool mustExist) {
    for (;;) {
        // Not on standard output, which may be another program's.
        std::fputs("Path of the file (empty to cancel): ", stderr);
        const std::string answer = readInputLine();
        if (answer.empty() || !mustExist || isFile(answer)) {
            return answer;
        }
        std::fputs("There is no such file.\n", stderr);
    }
}

}  // namespace

// A path that doesn't fit into the caller's buffer counts as a cancel, with error 122.
BOOL GetOpenFileNameA(LPOPENFILENAMEA request) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    const std::string answer = askForFile((request->Flags & OFN_FILEMUSTEXIST) != 0);
    if (answer.empty()) {
        return FALSE;
    }
    const std::string path = fullWindowsPath(answer);
    if (path.size() >= request->nMaxFile) {
        return fail(ERROR_INSUFFICIENT_BUFFER);
    }
    std::memcpy(request->lpstrFile, path.c_str(), path.size() + 1);
    return TRUE;
}
