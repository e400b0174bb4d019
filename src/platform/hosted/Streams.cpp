// Our own operations on the host: streams by Windows paths, program marks, places of JVMs.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "platform/Platform.h"
#include "platform/hosted/Environment.h"
#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/Handles.h"
#include "platform/hosted/Paths.h"

namespace corvane {

using namespace hosted;

namespace {

namespace fs = std::filesystem;

// open's flags for a mode of fopen.
int flagsOfMode(const char* mode) {
    const bool both = std::strchr(mode, '+') != nullptr;
    switch (*mode) {
        case 'w':
            return (both ? O_RDWR : O_WRONLY) | O_CREAT | O_TRUNC;
        case 'a':
            return (both ? O_RDWR : O_WRONLY) | O_CREAT | O_APPEND;
        default:
            return both ? O_RDWR : O_RDONLY;
    }
}

// The stream takes the descriptor over.
std::FILE* streamOver(Descriptor file, const char* mode) {
    std::FILE* stream = file ? fdopen(file.get(), mode) : nullptr;
    if (stream != nullptr) {
        [[maybe_unused]] const int taken = file.release();
    } else if (errno == EISDIR) {
        errno = EACCES;  // what Windows' library says of a directory
    }
    return stream;
}

// Adds the Windows path of a directory that exists and isn't there yet by whatever name.
void addDirectory(std::vector<fs::path>& seen, std::vector<std::string>& paths,
                  const fs::path& directory) {
    std::error_code error;
    // Distributions link several names to one JVM; verifying it once is enough.
    const fs::path real = fs::canonical(directory, error);
    if (!error && fs::is_directory(real, error) &&
        std::find(seen.begin(), seen.end(), real) == seen.end()) {
        seen.push_back(real);
        paths.push_back(windowsPath(directory.string()));
    }
}

// The homes that Linux distributions install, in alphabetical order.
std::vector<fs::path> installedJvms() {
    std::vector<fs::path> homes;
    std::error_code error;
    for (fs::directory_iterator entry("/usr/lib/jvm", error), end; !error && entry != end;
         entry.increment(error)) {
        homes.push_back(entry->path());
    }
    std::sort(homes.begin(), homes.end());
    return homes;
}

}  // namespace

// Goes through a descriptor, so that no child inherits the stream and a directory is refused.
std::FILE* openStream(const char* path, const char* mode) {
    if (injectedFailure(__func__)) {
        errno = hostError(GetLastError());
        return nullptr;
    }
    const auto host = hostPath(path);
    if (!host) {
        errno = ENOENT;
        return nullptr;
    }
    return streamOver(openHostFile(*host, flagsOfMode(mode), 0666), mode);
}

StreamError lastStreamError() {
    const int number = errno;
    return {number, windowsCode(number)};
}

DWORD finalPath(const char* path, LPSTR buffer, DWORD size) {
    const auto host = hostPath(path);
    char resolved[PATH_MAX];
    if (!host || realpath(host->c_str(), resolved) == nullptr) {
        return 0;
    }
    const DWORD length = giveText(windowsPath(resolved), buffer, size);
    return length < size ? length : 0;
}

// The host's loader looks beside no program.
void restrictLibraryLoading() {}

bool makeExecutable(const char* path) {
    const auto host = injectedFailure(__func__) ? std::nullopt : hostPath(path);
    struct stat status {};
    if (!host) {
        return false;
    }
    if (stat(host->c_str(), &status) != 0) {
        return failForPath(*host);
    }
    // The three bits for reading stand two places above those for running.
    // Whoever may read the file may run it.
    const mode_t readable = status.st_mode & (S_IRUSR | S_IRGRP | S_IROTH);
    const mode_t mode = (status.st_mode & 07777) | readable >> 2;
    return chmod(host->c_str(), mode) == 0 || failForPath(*host);
}

bool makeLink(const char* target, const char* path) {
    const auto host = injectedFailure(__func__) ? std::nullopt : hostPath(path);
    return host && (symlink(target, host->c_str()) == 0 || failForPath(*host));
}

void forEachPlatformJvmPath(TextTaker take) {
    std::vector<fs::path> seen;
    std::vector<std::string> paths;
    const std::string javaHome = environmentValue("JAVA_HOME");
    const auto home = javaHome.empty() ? std::nullopt : hostPath(javaHome.c_str());
    // The user's own choice comes first.
    if (home) {
        addDirectory(seen, paths, normalPath("", absoluteHostPath(*home) + "/bin"));
    }
    for (const fs::path& installed : installedJvms()) {
        addDirectory(seen, paths, installed / "bin");
    }
    for (const std::string& path : paths) {
        take(path.c_str());
    }
}

std::string nativePath(const char* path) {
    return hostPath(path).value_or("");
}

void setBinaryOutput() {}

}  // namespace corvane
