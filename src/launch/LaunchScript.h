// `LaunchScript`: how the Java application is started, a command template and a few settings
// (docs/launch-scripts.md), with the template's functions and its execution against a JVM.
#pragma once

#include <cstdint>
#include <optional>

#include "foundation/String.h"
#include "foundation/StringList.h"
#include "jvmfile/JvmFile.h"
#include "launcherfile/TagFile.h"
#include "template/TokenResolver.h"

namespace corvane {

class LaunchScript final : public TokenResolver {
  public:
    // From the tags of a launch script file.
    LaunchScript(const TagFile& tags, bool collectOutput);
    // From a template alone; everything else at its default.
    LaunchScript(const String& commandTemplate, bool collectOutput, bool useEmbeddedArchives);

    String description() const { return description_; }
    // What all executions so far wrote to the two streams.
    String stdOut() const { return stdOut_; }
    String errOut() const { return errOut_; }

    // Starts the application on `jvmFile`, waits for its end and gives its exit code.
    // `extraArguments` may be null. With `consoleRequested` (or if the script says so) the child
    // shares the launcher's console and its output isn't collected. Raises `LauncherException`: bad
    // template, failed extraction, child that can't be started.
    std::uint32_t execute(JvmFile& jvmFile, const StringList* extraArguments,
                          bool consoleRequested);

    // The template with its functions, tags of `jvmFile` and environment variables filled in.
    String expandCommand(JvmFile& jvmFile);

    // Replaces one %FUNCTION%(arguments) or one #VARIABLE#.
    void resolveToken(String& text, char separator, std::size_t start, std::size_t end) override;

    // Reads a function's argument list from `pos`, which moves behind it. Raises as `scriptError`.
    static void parseArguments(const String& text, std::size_t& pos, StringList& arguments);

    bool displayConsole() const noexcept { return displayConsole_; }
    bool autoSetWorkingDir() const noexcept { return autoSetWorkingDir_; }
    bool useEmbeddedArchives() const noexcept { return useEmbeddedArchives_; }

  private:
    struct Function;
    static const Function functions[];
    static const Function& findFunction(const String& text, const String& name);

    // Logs the template as it stands and raises a `LauncherException` "Launch script error: " +
    // `message`.
    [[noreturn]] static void scriptError(const String& text, const String& message);

    // The template functions, with as many arguments as their table allows.
    String replace(const StringList& arguments);
    String runtimeSystemProperties(const StringList& arguments);
    String runtimeJavaArgs(const StringList& arguments);
    String systemProperty(const StringList& arguments);
    String classpath(const StringList& arguments);
    String ifExists(const StringList& arguments);
    String launcherFile(const StringList& arguments);
    String launcherDir(const StringList& arguments);
    String applicationArchive(const StringList& arguments);
    String tempDir(const StringList& arguments);

    String systemPropertyText(const String& name, const String& value);

    // The class path (ClassPath.cpp).
    String joinClasspath(const StringList& arguments, bool useEnvironment);
    void appendClasspath(String& classpath, const String& part) const;
    void addClasspathEntry(String& classpath, const String& entry) const;
    void addClasspathOption(String& classpath, const String& option) const;
    std::optional<String> readListFile(const String& path) const;
    String launcherListFile(const char* extension) const;
    String embeddedArchivesClasspath(bool quoted) const;
    String passInEnvironment(const String& classpath) const;

    // The execution (LaunchExecution.cpp).
    String commandLine(JvmFile& jvmFile, const StringList* extraArguments);
    String workingDirectory() const;
    void logOutput() const;

    String command_;  // its first execution takes the token of the home off
    bool collectOutput_;
    bool displayConsole_ = false;
    bool autoSetWorkingDir_ = true;
    String stdOut_;
    String errOut_;
    JvmFile* jvmFile_ = nullptr;  // set only while `expandCommand` runs
    bool useEmbeddedArchives_ = true;
    String description_;
    String archive_;  // one more class path part, itself a template
};

}  // namespace corvane
