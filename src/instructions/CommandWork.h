// `CommandWork`: what the commands of the instruction language do once their arguments are read.
// The launcher's own stands in Actions.cpp; the pack tool has one that only looks.
#pragma once

#include <cstdint>

#include "foundation/String.h"

namespace corvane {

// What the user sees of the unpacking of a carried JVM, and where it goes.
enum class InstallMode : std::int32_t {
    hidden = 0,           // to a temporary directory
    shown = 1,            // to a temporary directory
    chosenDirectory = 2,  // to a directory that the user picks
};

// One operation for each command that does more than to read and to jump, with its arguments. What
// they leave in variables is the launcher's own to say (Actions.h, SearchFlows.h). Each may raise a
// `LauncherException`.
class CommandWork {
  public:
    virtual void initializeUi() = 0;
    virtual void findJvm(bool showUi, bool showFailure) = 0;
    virtual void verify(bool showUi, bool showFailure, std::int32_t fileId) = 0;
    virtual void installJvm(InstallMode mode) = 0;
    // The exit value of the application.
    virtual std::int32_t launch(const String& jvmFilePath, std::int16_t seconds) = 0;
    virtual std::int32_t internalLaunch(std::int32_t fileId, std::int16_t seconds) = 0;
    virtual void executeLauncher(std::int32_t fileIndex) = 0;
    virtual void show(const String& text) = 0;

  protected:
    ~CommandWork() = default;
};

// The launcher's own.
CommandWork& launcherWork();

}  // namespace corvane
