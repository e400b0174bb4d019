// From a launch script and a JVM to a running child and its exit code.
#include "base/Log.h"
#include "base/RunContext.h"
#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"
#include "host/Environment.h"
#include "host/Paths.h"
#include "launch/LaunchScript.h"
#include "launcherfile/LauncherKind.h"
#include "launcherfile/PayloadFormat.h"
#include "process/ProcessRunner.h"

namespace corvane {

namespace {

constexpr const char* javaHome = "JAVA_HOME";

String quotedArgument(const String& argument) {
    const String escapedQuote("\\\"");
    String text = argument;
    for (std::size_t at = text.find('"'); at != String::npos; at = text.find('"', at + 2))
        text.replace(at, 1, escapedQuote);
    return " \"" + text + "\"";
}

// Applies one NAME=VALUE setting; without an equals sign the variable is set empty.
void applySetting(String setting) {
    trim(setting);
    if (setting.empty())
        return;
    const std::size_t equals = setting.find('=');
    String name = setting.substr(0, equals);
    String value = equals == String::npos ? String() : setting.substr(equals + 1);
    trim(name);
    trim(value);
    setEnvironmentValue(name, value);
}

// A wizard's JVM file may set variables for the child; they stay set.
void applyWizardSettings(const TagFile& tags) {
    if (!isWizardKind(launcherKind(runContext().launcherPath.cstr())))
        return;
    for (const String& setting : tags.values("SET_ENV_FOR_WIZARD"))
        applySetting(setting);
}

}  // namespace

std::uint32_t LaunchScript::execute(JvmFile& jvmFile, const StringList* extraArguments,
                                    bool consoleRequested) {
    const String line = commandLine(jvmFile, extraArguments);
    const String directory = workingDirectory();
    logMessage("Executing launch script command: " + line +
               (autoSetWorkingDir_ ? " in working directory " + directory
                                   : " in current working directory"));
    const String savedJavaHome = getEnvironmentValue(javaHome);
    setEnvironmentValue(javaHome, jvmFile.tag("JVM_HOME"));
    applyWizardSettings(jvmFile.tags());
    const bool show = displayConsole_ || consoleRequested;
    ProcessOptions options;
    options.showConsole = show;
    options.collect = !show && collectOutput_;
    const std::uint32_t exitCode = runCommand(line, directory, options, &stdOut_, &errOut_);
    setEnvironmentValue(javaHome, savedJavaHome);
    if (options.collect)
        logOutput();
    return exitCode;
}

// The home goes in front as it stands, behind a quote, so that nothing in it is taken for a token.
String LaunchScript::commandLine(JvmFile& jvmFile, const StringList* extraArguments) {
    const String homeToken("@JVM_HOME@");
    if (command_.empty())
        throw LauncherException("Launch script error: The COMMAND tag is missing or empty.");
    if (command_.compare(1, homeToken.length(), homeToken) == 0)
        command_.erase(0, 1 + homeToken.length());
    String line = "\"" + jvmFile.tag("JVM_HOME") + expandCommand(jvmFile);
    if (extraArguments == nullptr)
        return line;
    for (const String& argument : *extraArguments)
        line.append(quotedArgument(argument));
    return line;
}

// Empty stands for the launcher's own.
String LaunchScript::workingDirectory() const {
    return autoSetWorkingDir_ ? parentDirectory(runContext().launcherPath) : String();
}

void LaunchScript::logOutput() const {
    logMessage("Output from the launch script execution");
    logMessage("StdOut:");
    logMessage(stdOut_);
    logMessage("ErrOut:");
    logMessage(errOut_);
}

}  // namespace corvane
