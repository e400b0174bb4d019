// Playing of a run: all that a launcher does on this machine, but for the start of the application.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "packer/project/Project.h"
#include "packer/trial/ReportReader.h"

namespace corvane::pack {

// What a JVM file has to go by.
struct TrialJvmFile {
    std::string description;
    std::string executable;
    std::vector<std::pair<std::string, int>> hints;  // how many of which kind
    bool searchesDisks = false;
};

// An entry of a class path.
struct TrialPath {
    std::string path;
    bool exists = false;
};

// What the launcher would start.
struct TrialStart {
    bool isApplication = false;
    bool isSupposed = false;  // on a Java that wasn't found
    std::string commandLine;
    std::string directory;
    std::vector<TrialPath> classPath;
    std::vector<std::pair<std::string, std::string>> environment;  // what the launcher sets
};

struct TrialRun {
    std::filesystem::path launcher;  // absolute
    std::string temporaryRoot;       // below which everything was removed again
    std::vector<TrialJvmFile> jvmFiles;
    std::vector<ReportFields> report;
    std::vector<std::string> messages;  // what the user would have read
    std::vector<TrialStart> starts;
    // The JVM files are for another system than this machine's, so no Java was looked for.
    bool isForeign = false;
    bool wasEnded = false;  // by the user

    bool startsApplication() const;
};

// Plays the launcher `launcher` or, if `project` isn't null, the one of that name that would be
// built of it, with `arguments`. May be called once in a process. Raises `PackError` for a file
// that can't be read.
TrialRun playRun(const std::filesystem::path& launcher, const Project* project,
                 const std::vector<std::string>& arguments);

// Tells a user about it.
void printTrial(const TrialRun& run, std::ostream& out);

}  // namespace corvane::pack
