// `LaunchScript`: how the Java application is started, a command template and a few settings
// (docs/launch-scripts.md).
#pragma once

#include <cstdint>

#include "foundation/String.h"
#include "foundation/StringList.h"
#include "jvmfile/JvmFile.h"
#include "launcherfile/TagFile.h"
#include "process/LimitedRun.h"

namespace corvane {

// What a launch script says. Never changes once it is read.
struct LaunchSettings {
    // Behind the token of the JVM's home, which every command begins with: the home goes in front
    // of it as it stands, behind a quote, so that nothing in it is taken for a token.
    String command;
    bool hasCommand = false;
    bool displayConsole = false;
    bool autoSetWorkingDir = true;
    bool useEmbeddedArchives = true;
    bool cleanClassPath = false;  // no empty entries
    bool exactArguments = false;  // quoted as the C runtime reads them
    bool argumentFile = false;    // for a command line that is too long
    String directory;  // the working directory; empty for the one that the other settings say
    String description;
    String archive;  // one more class path part, itself a template
};

// What the tags of a launch script file say.
LaunchSettings readLaunchSettings(const TagFile& tags);
// Whether a command has the token of the home behind its first character, which isn't looked at.
bool beginsWithHome(const String& command) noexcept;

class LaunchScript {
  public:
    // From the tags of a launch script file.
    LaunchScript(const TagFile& tags, bool collectOutput);
    // From a template alone; everything else at its default. An empty `directory` is the
    // launcher's.
    LaunchScript(const String& commandTemplate, bool collectOutput, bool useEmbeddedArchives,
                 const String& directory = {});

    String description() const { return settings_.description; }
    // What all executions so far wrote to the two streams.
    String stdOut() const { return stdOut_; }
    String errOut() const { return errOut_; }

    // Starts the application on `jvmFile`, waits for its end and gives its exit code.
    // `extraArguments` may be null. With `consoleRequested` (or if the script says so) the child
    // shares the launcher's console and its output isn't collected. Raises `LauncherException`: bad
    // template, failed extraction, child that can't be started.
    std::uint32_t execute(JvmFile& jvmFile, const StringList* extraArguments,
                          bool consoleRequested);

    // The same for a child that has so much time, shares no console and is collected. Too much
    // output isn't logged.
    LimitedRun executeWithin(std::uint64_t milliseconds, JvmFile& jvmFile);

    // The command line of an execution; `extraArguments` may be null. One that is too long for the
    // system raises, or goes through an argument file, as the script says.
    String commandLine(JvmFile& jvmFile, const StringList* extraArguments) const;

    // The template with its functions, tags of `jvmFile` and environment variables filled in.
    String expandCommand(JvmFile& jvmFile) const;

  private:
    template <class Run>
    auto executeBy(Run run, JvmFile& jvmFile, const StringList* extraArguments);
    String fitting(const String& line) const;
    String workingDirectory() const;
    void logOutput() const;

    const LaunchSettings settings_;
    const bool collectOutput_;
    String stdOut_;
    String errOut_;
};

}  // namespace corvane
