// The search for the program of a command line.
#include "platform/hosted/ProgramSearch.h"

#include <sys/stat.h>

#include <algorithm>
#include <sstream>
#include <vector>

#include "platform/hosted/ChildText.h"
#include "platform/hosted/CommandLine.h"
#include "platform/hosted/Environment.h"
#include "platform/hosted/Errors.h"
#include "platform/hosted/Module.h"
#include "platform/hosted/Paths.h"

namespace corvane::hosted {

namespace {

enum class Found { nothing, directory, file };

// Whether a file can be run is for exec to say.
Found lookAt(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return Found::nothing;
    }
    return S_ISDIR(status.st_mode) ? Found::directory : Found::file;
}

// Looks at `path` and, if there is nothing, at `path`.exe; `path` becomes what was found.
Found lookWithExtension(std::string& path) {
    const Found plain = lookAt(path);
    if (plain != Found::nothing) {
        return plain;
    }
    // Launchers packed for Windows name their programs without it.
    path += ".exe";
    return lookAt(path);
}

// In the order in which Windows looks through them.
std::vector<std::string> searchDirectories() {
    const std::string module = modulePath();
    std::vector<std::string> directories{module.substr(0, module.rfind('/')),
                                         currentHostDirectory()};
    // The launcher may have added directories of its own.
    std::istringstream path(childText(environmentValue("PATH")));
    for (std::string directory; std::getline(path, directory, ':');) {
        directories.push_back(absoluteHostPath(directory));
    }
    return directories;
}

// A directory that happens to have the name of a program doesn't end the search for one.
Found searchFor(const std::string& name, std::string& path) {
    for (const std::string& directory : searchDirectories()) {
        path = directory + "/" + name;
        if (lookWithExtension(path) == Found::file) {
            return Found::file;
        }
    }
    return Found::nothing;
}

// Looks for one name; `path` becomes the absolute host path of what is found.
Found resolve(const std::string& name, std::string& path) {
    if (name.empty()) {
        return Found::nothing;
    }
    if (name.find_first_of("\\/:") == std::string::npos) {
        return searchFor(name, path);
    }
    const auto host = hostPath(name.c_str());
    path = host ? absoluteHostPath(*host) : "";
    return host ? lookWithExtension(path) : Found::nothing;
}

}  // namespace

std::optional<FoundProgram> findProgram(const std::string& commandLine) {
    // Blanks inside quotes end nothing.
    const bool quoted = commandLine[0] == '"';
    bool sawDirectory = false;
    FoundProgram program;
    for (std::size_t end = programNameEnd(commandLine);;) {
        std::string name = commandLine.substr(0, end);
        std::erase(name, '"');
        program.nameEnd = end;
        const Found found = resolve(name, program.path);
        if (found == Found::file) {
            return program;
        }
        // A directory may be the first half of a path with a blank in it, so this is no end yet.
        sawDirectory = sawDirectory || found == Found::directory;
        if (quoted || end == commandLine.size()) {
            fail(sawDirectory ? ERROR_ACCESS_DENIED : ERROR_FILE_NOT_FOUND);
            return std::nullopt;
        }
        end = std::min(commandLine.find_first_of(" \t", end + 1), commandLine.size());
    }
}

}  // namespace corvane::hosted
