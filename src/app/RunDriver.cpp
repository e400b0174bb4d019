// The option loop and the way of a run behind it.
#include "app/RunDriver.h"

#include "app/InputFile.h"
#include "app/base/Log.h"
#include "app/base/Messages.h"
#include "app/base/RunContext.h"
#include "app/base/Ui.h"
#include "foundation/Exceptions.h"
#include "instructions/Instructions.h"
#include "launcherfile/LauncherFile.h"

namespace corvane {

namespace {

constexpr const char* version = "2.52";

// The state of the option loop.
using Loop = RunDecision;

// One option. `text` is its value, or the option itself if it takes none.
struct Option {
    const char* name;
    bool takesValue;
    void (*apply)(Loop& loop, const String& text);
    void (*valueMissing)(Loop& loop);
};

void ignoreMissing(Loop&) {}

void failMissing(Loop& loop, const String& message) {
    uiShowMessage(message);
    loop.result = -1;
}

void logFileMissing(Loop& loop) {
    failMissing(loop, loadMessage(CatalogueText::logFileNameMissing));
}

void originalLauncherMissing(Loop& loop) {
    failMissing(loop, "Missing original launcher file name.");
}

void inputFileMissing(Loop& loop) {
    failMissing(loop, loadMessage(CatalogueText::inputFileNameMissing));
    loop.runScript = false;
}

void setOriginalLauncher(Loop&, const String& path) {
    runContext().originalLauncherPath = path;
    runContext().originalLauncherGiven = true;
}

void beSilentAndPassOn(Loop&, const String& option) {
    uiSetSilent(true);
    runContext().passThroughArgs.add(option);
}

void showVersion(Loop& loop, const String&) {
    uiShowMessage(version);
    loop.runScript = false;
}

void showConsole(Loop&, const String&) {
    runContext().showChildConsole = true;
}

void showConsoleAndPassOn(Loop& loop, const String& option) {
    showConsole(loop, option);
    runContext().passThroughArgs.add("-console");
}

// The options, in the order of comparison.
constexpr Option options[] = {
    {"-cv:log", true, [](Loop&, const String& value) { runContext().logFile = value; },
     logFileMissing},
    {"-cv:orig", true, setOriginalLauncher, originalLauncherMissing},
    {"-cv:tempdir", true, [](Loop&, const String& value) { runContext().tempDir = value; },
     ignoreMissing},
    {"-cv:silent", false, [](Loop&, const String&) { uiSetSilent(true); }, nullptr},
    {"-silent", false, beSilentAndPassOn, nullptr},
    {"-cv:javahome", true, [](Loop&, const String& value) { runContext().javaHome = value; },
     ignoreMissing},
    {"-cv:extract", false, [](Loop& loop, const String&) { runExtractOption(loop); }, nullptr},
    {"-cv:in", true, [](Loop& loop, const String& value) { runInputFileOption(value, loop); },
     inputFileMissing},
    {"-cv:version", false, showVersion, nullptr},
    {"-cv:javaconsole", false, showConsole, nullptr},
    {"-accessibility", false, showConsoleAndPassOn, nullptr},
    {"-console", false, showConsoleAndPassOn, nullptr},
    {"-cp:p", true, [](Loop&, const String& value) { runContext().classpathPrepend = value; },
     ignoreMissing},
    {"-cp:a", true, [](Loop&, const String& value) { runContext().classpathAppend = value; },
     ignoreMissing},
};

const Option* findOption(const String& argument) {
    for (const Option& option : options) {
        if (argument == option.name)
            return &option;
    }
    return nullptr;
}

// Executes the argument at `index`, and steps over its value, if it takes one.
void processArgument(Loop& loop, const StringList& args, std::int32_t& index) {
    const String& argument = args.at(index);
    const Option* const option = findOption(argument);
    if (option == nullptr)
        runContext().passThroughArgs.add(argument);
    else if (!option->takesValue)
        option->apply(loop, argument);
    else if (index + 1 < args.count())
        option->apply(loop, args.at(++index));
    else
        option->valueMissing(loop);
}

}  // namespace

std::int32_t runLauncher(const StringList& args, const String& path) {
    RunContext& context = runContext();
    try {
        context.launcherPath = path;
        context.originalLauncherPath = path;
        for (const String& argument : args)
            context.originalArgs.add(argument);
        return processOptions(args);
    } catch (const LauncherException& failure) {
        uiShowMessage(failure.message);
        logMessage(failure.message, LogLevel::error);
        return -1;
    }
}

std::int32_t processOptions(const StringList& args) {
    Loop loop;
    runContext().originalLauncherGiven = false;
    uiSetProgress(0);
    for (std::int32_t i = 0; i < args.count(); ++i)
        processArgument(loop, args, i);
    if (!loop.runScript)
        return loop.result;
    loadLauncherFile(true);
    const std::int32_t value = runInstructions();
    uiSetProgress(100);
    return value;
}

}  // namespace corvane
