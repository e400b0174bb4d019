// `corvane-pack try`.
#include <algorithm>
#include <iostream>

#include "packer/base/Errors.h"
#include "packer/base/Paths.h"
#include "packer/commands/Command.h"
#include "packer/payload/PackedLauncher.h"
#include "packer/project/Project.h"
#include "packer/trial/Trial.h"

namespace corvane::pack {

namespace {

namespace fs = std::filesystem;

constexpr int endedByUser = 130;

// Options that would do the work of another command, or take the report away.
constexpr const char* refused[] = {"-cv:in", "-cv:extract", "-cv:report", "-cv:orig"};

void checkArguments(const std::vector<std::string>& arguments) {
    for (const char* option : refused) {
        if (std::ranges::find(arguments, option) != arguments.end())
            throw UsageError(std::string(option) + " is no part of a run that is played");
    }
}

bool isProject(const fs::path& place) {
    return fs::is_directory(place) || place.extension() == ".manifest";
}

TrialRun play(const fs::path& place, System system, const std::vector<std::string>& arguments) {
    if (!isProject(place)) {
        const PackedLauncher checked(place);
        return playRun(place, nullptr, arguments);
    }
    const Project project = readSoundProject(place, system);
    return playRun(project.output(), &project, arguments);
}

int run(Arguments& arguments) {
    const std::vector<std::string> passedOn = arguments.takeBehindDashes();
    checkArguments(passedOn);
    const System system = takeSystem(arguments).value_or(ownSystem());
    const TrialRun trial = play(takeProject(arguments), system, passedOn);
    printTrial(trial, std::cout);
    if (trial.wasEnded)
        return endedByUser;
    return trial.startsApplication() || trial.isForeign ? success : failure;
}

}  // namespace

const Command tryCommand = {
    "try", "[FOLDER|MANIFEST|LAUNCHER] [--for windows|host] [-- ARGUMENT ...]",
    "plays a run on this machine, without the application",
    "Does all that the launcher does on this machine, but for starting the application, and tells\n"
    "which JVM file found what where, and the command line with class path, working directory and\n"
    "environment. Nothing is left behind; the exit value is 1 if the application would\n"
    "not start.\n"
    "\n"
    "  --for       the system whose JVM files stand for words such as <17+>; this one by default\n"
    "  ARGUMENT    for the launcher or the application\n",
    run};

}  // namespace corvane::pack
