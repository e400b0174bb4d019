// The launch script: its reading and its execution, from a JVM to a running child and its exit
// code.
#include "launch/LaunchScript.h"

#include "base/Log.h"
#include "base/Report.h"
#include "base/RunContext.h"
#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"
#include "host/Environment.h"
#include "host/Paths.h"
#include "launch/ArgumentFile.h"
#include "launch/CommandExpansion.h"
#include "launcherfile/LauncherKind.h"
#include "launcherfile/PayloadFormat.h"
#include "platform/Platform.h"
#include "process/ProcessRunner.h"

namespace corvane {

namespace {

constexpr const char* javaHome = "JAVA_HOME";

constexpr std::string_view homeToken = "@JVM_HOME@";

String behindHome(const String& command) {
    return beginsWithHome(command) ? command.substr(1 + homeToken.length()) : command;
}

LaunchSettings settingsOf(const String& command) {
    LaunchSettings settings;
    settings.command = behindHome(command);
    settings.hasCommand = !command.empty();
    return settings;
}

LaunchSettings settingsOf(const String& command, bool useEmbeddedArchives,
                          const String& directory) {
    LaunchSettings settings = settingsOf(command);
    settings.directory = directory;
    settings.useEmbeddedArchives = useEmbeddedArchives;
    return settings;
}

String quotedArgument(const String& argument) {
    return " \"" + replaceAll(argument, "\"", "\\\"") + "\"";
}

// Quoted so that the C runtime, by whose rules Java reads its command line, gives it back as it is:
// backslashes count only in front of a quote, and are doubled there.
String exactArgument(const String& argument) {
    String text = " \"";
    std::size_t backslashes = 0;
    for (const char character : argument.view()) {
        if (character == '"')
            text.append(String(backslashes + 1, '\\'));
        backslashes = character == '\\' ? backslashes + 1 : 0;
        text.append(character);
    }
    return text.append(String(backslashes, '\\')).append('"');
}

[[noreturn]] void tooLong(const String& line) {
    throw LauncherException(
        "Launch script error: The command line has " +
        decimalText(static_cast<std::int32_t>(line.length())) +
        " characters, which is too long for the system. Give fewer arguments or a shorter class "
        "path, or set ARG_FILE: 1 in the launch script, which Java 9 and later understand.");
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

void reportLaunch(const String& commandLine, const String& directory) {
    ReportObject("launch")
        .add("commandLine", commandLine)
        .add("directory", directory)
        .add("classPath", runContext().classPath)
        .write();
}

}  // namespace

LaunchSettings readLaunchSettings(const TagFile& tags) {
    LaunchSettings settings = settingsOf(tags.value("COMMAND", 0));
    settings.displayConsole = tags.boolValue("DISPLAY_CONSOLE", false);
    settings.autoSetWorkingDir = tags.boolValue("AUTO_SET_WORKING_DIR", true);
    settings.cleanClassPath = tags.boolValue("CLEAN_CP", false);
    settings.exactArguments = tags.boolValue("EXACT_ARGS", false);
    settings.argumentFile = tags.boolValue("ARG_FILE", false);
    settings.description = tags.value("DESC", 0);
    settings.archive = tags.value("ARCHIVE", 0);
    return settings;
}

bool beginsWithHome(const String& command) noexcept {
    return !command.empty() && command.view().substr(1).starts_with(homeToken);
}

LaunchScript::LaunchScript(const TagFile& tags, bool collectOutput)
    : settings_(readLaunchSettings(tags)), collectOutput_(collectOutput) {}

LaunchScript::LaunchScript(const String& commandTemplate, bool collectOutput,
                           bool useEmbeddedArchives, const String& directory)
    : settings_(settingsOf(commandTemplate, useEmbeddedArchives, directory)),
      collectOutput_(collectOutput) {}

String LaunchScript::expandCommand(JvmFile& jvmFile) const {
    return CommandExpansion(settings_, jvmFile).command();
}

// What every execution has around the run of its command line, which `run` gives the result of.
template <class Run>
auto LaunchScript::executeBy(Run run, JvmFile& jvmFile, const StringList* extraArguments) {
    runContext().classPath.erase();
    const String line = commandLine(jvmFile, extraArguments);
    const String directory = workingDirectory();
    logMessage("Executing launch script command: " + line +
               (settings_.autoSetWorkingDir ? " in working directory " + directory
                                            : " in current working directory"));
    // The check of a JVM has no arguments to pass on.
    if (extraArguments != nullptr)
        reportLaunch(line, directory);
    const String savedJavaHome = getEnvironmentValue(javaHome);
    setEnvironmentValue(javaHome, jvmFile.tag("JVM_HOME"));
    applyWizardSettings(jvmFile.tags());
    const auto result = run(line, directory);
    setEnvironmentValue(javaHome, savedJavaHome);
    return result;
}

std::uint32_t LaunchScript::execute(JvmFile& jvmFile, const StringList* extraArguments,
                                    bool consoleRequested) {
    const bool show = settings_.displayConsole || consoleRequested;
    ProcessOptions options;
    options.showConsole = show;
    options.collect = !show && collectOutput_;
    options.question = extraArguments == nullptr;
    const auto run = [&](const String& line, const String& directory) {
        return runCommand(line, directory, options, &stdOut_, &errOut_);
    };
    const std::uint32_t exitCode = executeBy(run, jvmFile, extraArguments);
    if (options.collect)
        logOutput();
    return exitCode;
}

LimitedRun LaunchScript::executeWithin(std::uint64_t milliseconds, JvmFile& jvmFile) {
    const auto run = [&](const String& line, const String& directory) {
        return runLimited(line, directory, milliseconds, stdOut_, errOut_);
    };
    LimitedRun result = executeBy(run, jvmFile, nullptr);
    if (result.end != LimitedRun::End::tooMuchOutput)
        logOutput();
    return result;
}

String LaunchScript::commandLine(JvmFile& jvmFile, const StringList* extraArguments) const {
    if (!settings_.hasCommand)
        throw LauncherException("Launch script error: The COMMAND tag is missing or empty.");
    String line = "\"" + jvmFile.tag("JVM_HOME") + expandCommand(jvmFile);
    if (extraArguments != nullptr) {
        for (const String& argument : *extraArguments)
            line.append(settings_.exactArguments ? exactArgument(argument)
                                                 : quotedArgument(argument));
    }
    return fitting(line);
}

// A line that the system takes.
String LaunchScript::fitting(const String& line) const {
    if (commandLineFits(line.cstr()))
        return line;
    if (!settings_.argumentFile)
        tooLong(line);
    return throughArgumentFile(line);
}

// Empty stands for the launcher's own.
String LaunchScript::workingDirectory() const {
    if (!settings_.directory.empty())
        return settings_.directory;
    return settings_.autoSetWorkingDir ? parentDirectory(runContext().launcherPath) : String();
}

void LaunchScript::logOutput() const {
    logMessage("Output from the launch script execution");
    logMessage("StdOut:");
    logMessage(stdOut_);
    logMessage("ErrOut:");
    logMessage(errOut_);
}

}  // namespace corvane
