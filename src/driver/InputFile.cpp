// `-cv:extract`, and the input file with its actions.
#include "driver/InputFile.h"

#include "assembly/LauncherFileLoading.h"
#include "base/Log.h"
#include "base/Messages.h"
#include "base/RunContext.h"
#include "base/Ui.h"
#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"
#include "instructions/Actions.h"
#include "jvmsearch/SearchFlows.h"
#include "platform/Platform.h"
#include "variables/VariableTable.h"

namespace corvane {

namespace {

constexpr std::int32_t progressDone = 100;

// What an action needs to know.
struct ActionCall {
    const TagFile& tags;
    bool showProgress;
    bool showFailure;
    RunDecision& decision;

    String key(const char* name) const { return tags.value(name, 0); }
};

void search(const ActionCall& call) {
    searchAction(call.showProgress, call.showFailure);
    uiSetProgress(progressDone);
}

void searchAll(const ActionCall& call) {
    searchAllAction(call.showProgress, call.showFailure);
    uiSetProgress(progressDone);
}

void describeAll(const ActionCall& call) {
    describeAllAction(call.showProgress, call.showFailure);
    uiSetProgress(progressDone);
}

void verifyJvm(const ActionCall& call) {
    const String file = call.key("VERIFY_JVM_FILE");
    const String home = call.key("VERIFY_JVM_HOME");
    if (file.empty() || home.empty()) {
        logMessage(
            "TO execute the VERIFY_JVM action, you must also provide values in the input file for "
            "VERIFY_JVM_FILE and VERIFY_JVM_HOME.",
            LogLevel::error);
        call.decision.result = -1;
        return;
    }
    TagFile jvmFile(file);
    verifyJvmAction(call.showProgress, call.showFailure, jvmFile, home);
    uiPrintResult(decimalText(VariableTable().numericValue(foundVariable)));
    uiSetProgress(progressDone);
}

void install(const ActionCall& call) {
    const String exe = call.key("INSTALL_JVM_EXE");
    const String destination = call.key("INSTALL_JVM_DEST");
    if (!exe.empty() && !destination.empty())
        installJvmAction(call.showProgress, exe, destination);
    uiSetProgress(progressDone);
}

struct Action {
    const char* name;
    void (*carryOut)(const ActionCall& call);  // null: the script runs instead
};

constexpr Action actions[] = {
    {"RUN_INSTRUCTIONS", nullptr}, {"SEARCH", search},        {"SEARCH_ALL", searchAll},
    {"DESCRIBE_ALL", describeAll}, {"VERIFY_JVM", verifyJvm}, {"INSTALL_JVM", install},
};

void dispatch(const ActionCall& call) {
    const String name = call.key("ACTION");
    for (const Action& action : actions) {
        if (!(name == action.name))
            continue;
        call.decision.runScript = action.carryOut == nullptr;
        if (action.carryOut != nullptr)
            action.carryOut(call);
        return;
    }
    const String text = loadMessage(MessageId::invalidAction) + name;
    uiShowMessage(text);
    throw LauncherException(text);
}

// The name without one quote at each end.
String unquoted(String name) {
    if (!name.empty() && name.at(0) == '"')
        name.erase(0, 1);
    if (!name.empty() && name.at(name.length() - 1) == '"')
        name.erase(name.length() - 1);
    return name;
}

// Reads the input file, and takes the log's name from it at once.
void readInputFile(const String& name, TagFile& tags) {
    const StreamGuard stream(name.empty() ? nullptr : openStream(unquoted(name).cstr(), "r"));
    if (!stream)
        throw LauncherException(loadMessage(MessageId::inputFileNotOpened));
    logMessage("Loading input file " + name);
    tags.read(stream.get(), name, 0, -1);
    runContext().logFile = tags.value("LOGFILE", 0);
}

}  // namespace

void runExtractOption(RunDecision& decision) {
    loadLauncherFile(*runContext().launcherFile, false);
    withContext(MessageId::extractFailed, [] { runContext().launcherFile->extractAll(); });
    uiSetProgress(progressDone);
    decision.runScript = false;
}

void runInputFileOption(const String& name, RunDecision& decision) {
    TagFile tags;
    runContext().inputFileGiven = true;
    try {
        readInputFile(name, tags);
    } catch (const LauncherException& failure) {
        uiShowMessage(loadMessage(MessageId::inputFileNotLoaded) + failure.message);
        throw;
    }
    try {
        loadFromInputFile(*runContext().launcherFile, tags);
    } catch (const LauncherException& failure) {
        uiShowMessage(failure.message);
        throw;
    }
    loadLauncherFile(*runContext().launcherFile, true);
    const bool showProgress = tags.boolValue("SHOW_PROGRESS", false);
    const bool showFailure = tags.boolValue("SHOW_FAIL_MSG", false);
    if (showProgress || showFailure)
        uiShowOrHide();
    else
        uiHide(0);
    if (showProgress)
        uiSetProgress(0);
    dispatch({tags, showProgress, showFailure, decision});
}

}  // namespace corvane
