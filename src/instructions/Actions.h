// What the commands of the instruction language do once their arguments are read, and the one
// action of an input file that shares their work.
#pragma once

#include <cstdint>

#include "foundation/String.h"
#include "instructions/CommandWork.h"

namespace corvane {

// Brings the front end up.
void initializeUi();

// Unpacks the JVM that the launcher carries. N1 becomes 1 and S1 the path of its `jvm` file, or 0
// and empty. Raises `LauncherException` when there is no installer or it can't be run.
void installJvm(InstallMode mode);

// Starts the application on the JVM of the resolved file at `jvmFilePath`, waits for it and gives
// its exit value; the front end stays up for `seconds`. Without a launch script: -1. Raises
// `LauncherException`.
std::int32_t launch(const String& jvmFilePath, std::int16_t seconds);

// The same on the JVM of the embedded JVM file with that id; -1, and a line in the log, when a part
// is missing.
std::int32_t internalLaunch(std::int32_t fileId, std::int16_t seconds);

// Hands over to the embedded launcher at that position of the index: it starts with this launcher's
// arguments, and nobody waits for it. Raises `LauncherException` when it can't be started.
void executeLauncher(std::int32_t fileIndex);

// Logs a message and shows it to the user.
void show(const String& text);

// Runs the JVM installer `exe` in `destination` and prints the path of the `jvm` file that it
// leaves there. Raises `LauncherException`.
void installJvmAction(bool showProgress, const String& exe, const String& destination);

}  // namespace corvane
