// Path mapping. Windows resolves "." and ".." in the text of a path, before it looks anything up,
// and so does this; absolute host paths are left to the host.
#include "platform/hosted/Paths.h"

#include <unistd.h>

#include <algorithm>
#include <climits>
#include <string_view>

#include "platform/hosted/DriveTable.h"
#include "platform/hosted/Errors.h"

namespace corvane::hosted {

namespace {

// Backslashes never belong to a name here.
std::string withSlashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

// Adds one component to `path`, which never becomes shorter than `rootLength`.
void addComponent(std::string& path, std::size_t rootLength, std::string_view component) {
    if (component.empty() || component == ".") {
        return;
    }
    if (component == "..") {
        // At the root ".." stays there, as on Windows.
        path.resize(path.size() > rootLength ? path.rfind('/') : rootLength);
        return;
    }
    path.append("/").append(component);
}

// The path behind a drive letter; none, with error 3, without a drive.
std::optional<std::string> onDrive(const Drive* drive, const char* rest) {
    if (drive == nullptr) {
        fail(ERROR_PATH_NOT_FOUND);
        return std::nullopt;
    }
    return normalPath(drive->directory, rest);
}

// Compares whole components: /srv/cat doesn't lie in /srv/c.
bool liesIn(const std::string& path, const std::string& directory) {
    return path.compare(0, directory.size(), directory) == 0 &&
           (path.size() == directory.size() || path[directory.size()] == '/');
}

// The letter of the drive that serves a host path, and how much of the path its directory is.
const Drive& servingDrive(const std::string& path) {
    const Drive* best = nullptr;
    for (const Drive& drive : systemDrives()) {
        if (liesIn(path, drive.directory) &&
            (best == nullptr || drive.directory.size() > best->directory.size())) {
            best = &drive;
        }
    }
    return best != nullptr ? *best : *mappedDrive('Z');
}

}  // namespace

std::string normalPath(const std::string& root, const std::string& rest) {
    std::string path = root;
    path.reserve(root.size() + rest.size() + 1);
    for (std::size_t start = 0; start < rest.size();) {
        const std::size_t end = std::min(rest.find_first_of("/\\", start), rest.size());
        addComponent(path, root.size(), std::string_view(rest).substr(start, end - start));
        start = end + 1;
    }
    return path.empty() ? "/" : path;
}

// "X:name" would be relative to a directory of its own on Windows; here to the drive's root.
std::optional<std::string> hostPath(const char* path) {
    if (path == nullptr || *path == '\0') {
        fail(ERROR_PATH_NOT_FOUND);
        return std::nullopt;
    }
    if (*path == '/') {
        return withSlashes(path);
    }
    // A leading backslash means the root of the current drive.
    if (*path == '\\') {
        return onDrive(mappedDrive(currentDriveLetter()), path);
    }
    if (isDriveLetter(path[0]) && path[1] == ':') {
        return onDrive(mappedDrive(path[0]), path + 2);
    }
    return withSlashes(path);
}

std::string absoluteHostPath(const std::string& path) {
    return !path.empty() && path[0] == '/' ? path
                                           : normalPath("", currentHostDirectory() + "/" + path);
}

std::string windowsPath(const std::string& path) {
    const Drive& drive = servingDrive(path);
    std::string result = path.substr(drive.directory.size());
    std::replace(result.begin(), result.end(), '/', '\\');
    return std::string(1, drive.letter) + ":" + (result.empty() ? "\\" : result);
}

// The host's root is the empty text, as in the drive table.
std::string currentHostDirectory() {
    char directory[PATH_MAX];
    // A directory that is gone has no path; the root does for what is asked then.
    const char* found = getcwd(directory, sizeof directory);
    return found == nullptr || found[1] == '\0' ? "" : found;
}

char currentDriveLetter() {
    return servingDrive(currentHostDirectory()).letter;
}

}  // namespace corvane::hosted
