// The option loop and the way of a run behind it.
#include "driver/RunDriver.h"

#include "assembly/LauncherFileLoading.h"
#include "base/Log.h"
#include "base/Messages.h"
#include "base/RunContext.h"
#include "base/Ui.h"
#include "driver/InputFile.h"
#include "driver/RunReport.h"
#include "foundation/Exceptions.h"
#include "instructions/Instructions.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

// One option. `text` is its value, or the option itself if it takes none.
struct Option {
    const char* name;
    bool takesValue;
    void (*apply)(RunDecision& loop, const String& text);
    void (*valueMissing)(RunDecision& loop);
    const char* usage;  // the option's line of the help, null for none
};

void ignoreMissing(RunDecision&) {}

void failMissing(RunDecision& loop, const String& message) {
    uiShowMessage(message);
    loop.result = -1;
}

void logFileMissing(RunDecision& loop) {
    failMissing(loop, loadMessage(MessageId::logFileNameMissing));
}

void originalLauncherMissing(RunDecision& loop) {
    failMissing(loop, "Missing original launcher file name.");
}

void reportMissing(RunDecision& loop) {
    failMissing(loop, "Missing report file name.");
}

void inputFileMissing(RunDecision& loop) {
    failMissing(loop, loadMessage(MessageId::inputFileNameMissing));
    loop.runScript = false;
}

void setOriginalLauncher(RunDecision&, const String& path) {
    runContext().originalLauncherPath = path;
    runContext().originalLauncherGiven = true;
}

void beSilentAndPassOn(RunDecision&, const String& option) {
    uiSetSilent(true);
    runContext().passThroughArgs.add(option);
}

void showVersion(RunDecision& loop, const String&) {
    uiShowMessage(CORVANE_VERSION);
    loop.runScript = false;
}

void showHelp(RunDecision& loop, const String&);

void extractAll(RunDecision& loop, const String&) {
    reportStart();
    runExtractOption(loop);
}

void carryOut(RunDecision& loop, const String& inputFile) {
    reportStart();
    runInputFileOption(inputFile, loop);
}

void showConsole(RunDecision&, const String&) {
    runContext().showChildConsole = true;
}

void showConsoleAndPassOn(RunDecision& loop, const String& option) {
    showConsole(loop, option);
    runContext().passThroughArgs.add("-console");
}

// The options, in the order of comparison.
constexpr Option options[] = {
    {"-cv:log", true, [](RunDecision&, const String& value) { runContext().logFile = value; },
     logFileMissing, "-cv:log FILE         writes a log"},
    {"-cv:report", true, [](RunDecision&, const String& value) { runContext().reportFile = value; },
     reportMissing, "-cv:report FILE      writes what was tried, for whoever helps you"},
    {"-cv:orig", true, setOriginalLauncher, originalLauncherMissing, nullptr},
    {"-cv:tempdir", true, [](RunDecision&, const String& value) { runContext().tempDir = value; },
     ignoreMissing, "-cv:tempdir DIR      where temporary files go"},
    {"-cv:silent", false, [](RunDecision&, const String&) { uiSetSilent(true); }, nullptr,
     "-cv:silent           no messages, no progress"},
    {"-silent", false, beSilentAndPassOn, nullptr,
     "-silent              the same, also for the application"},
    {"-cv:javahome", true, [](RunDecision&, const String& value) { runContext().javaHome = value; },
     ignoreMissing, "-cv:javahome DIR     the home of a JVM to try first"},
    {"-cv:extract", false, extractAll, nullptr,
     "-cv:extract          unpacks the launcher into the current directory"},
    {"-cv:in", true, carryOut, inputFileMissing, "-cv:in FILE          carries out an input file"},
    {"-cv:version", false, showVersion, nullptr,
     "-cv:version          shows the launcher's version"},
    {"-cv:help", false, showHelp, nullptr, "-cv:help             shows this list"},
    {"-cv:javaconsole", false, showConsole, nullptr,
     "-cv:javaconsole      the application writes to this console"},
    {"-accessibility", false, showConsoleAndPassOn, nullptr,
     "-accessibility       the same, and -console for the application"},
    {"-console", false, showConsoleAndPassOn, nullptr,
     "-console             no window, also for the application"},
    {"-cp:p", true,
     [](RunDecision&, const String& value) { runContext().classpathPrepend = value; },
     ignoreMissing, "-cp:p PATH           goes in front of the class path; @FILE names a list"},
    {"-cp:a", true, [](RunDecision&, const String& value) { runContext().classpathAppend = value; },
     ignoreMissing, "-cp:a PATH           goes behind the class path"},
};

void showHelp(RunDecision& loop, const String&) {
    String help = "Options of the launcher. All other arguments go to the application.\n";
    for (const Option& option : options) {
        if (option.usage != nullptr)
            help.append("\n  ").append(option.usage);
    }
    uiShowMessage(help);
    loop.runScript = false;
}

// An argument for the application, which may be a misspelt option of ours.
void passOn(const String& argument) {
    if (argument.view().starts_with("-cv:"))
        logMessage(argument + " is no option of the launcher. It goes to the application.",
                   LogLevel::warning);
    runContext().passThroughArgs.add(argument);
}

const Option* findOption(const String& argument) {
    for (const Option& option : options) {
        if (argument == option.name)
            return &option;
    }
    return nullptr;
}

// Executes the argument at `index`, and steps over its value, if it takes one.
void processArgument(RunDecision& loop, const StringList& args, std::int32_t& index) {
    const String& argument = args.at(index);
    const Option* const option = findOption(argument);
    if (option == nullptr)
        passOn(argument);
    else if (!option->takesValue)
        option->apply(loop, argument);
    else if (index + 1 < args.count())
        option->apply(loop, args.at(++index));
    else
        option->valueMissing(loop);
}

// Of what a tool is given, only the launcher's own options in front of all else are the launcher's.
bool belongsToTool(const String& argument) {
    return runContext().isTool &&
           (!argument.view().starts_with("-cv:") || findOption(argument) == nullptr);
}

}  // namespace

std::int32_t runLauncher(const StringList& args, const String& path) {
    RunContext& context = runContext();
    std::int32_t value = -1;
    String failed;
    prepareReport();
    try {
        context.launcherPath = path;
        context.originalLauncherPath = path;
        for (const String& argument : args)
            context.originalArgs.add(argument);
        value = processOptions(args);
    } catch (const LauncherException& failure) {
        // Whoever asked for the end knows about it, and a box would hold it up.
        if (endRequests() == 0)
            uiShowMessage(failure.message, failure.link);
        logMessage(failure.message, LogLevel::error);
        failed = failure.message;
    }
    if (endRequests() > 0) {
        logMessage("The run was asked to end.", LogLevel::warning);
        value = context.endAnswered ? value : static_cast<std::int32_t>(endRequestValue());
    }
    reportEnd(value, failed);
    return value;
}

std::int32_t processOptions(const StringList& args) {
    RunDecision loop;
    runContext().originalLauncherGiven = false;
    uiSetProgress(0);
    std::int32_t next = 0;
    for (; next < args.count() && !belongsToTool(args.at(next)); ++next)
        processArgument(loop, args, next);
    for (; next < args.count(); ++next)
        runContext().passThroughArgs.add(args.at(next));
    reportStart();
    if (!loop.runScript)
        return loop.result;
    loadLauncherFile(*runContext().launcherFile, true);
    const std::int32_t value = runInstructions();
    uiSetProgress(100);
    return value;
}

}  // namespace corvane
