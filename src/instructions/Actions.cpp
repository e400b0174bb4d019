// The commands' work.
#include "instructions/Actions.h"

#include "base/Log.h"
#include "base/Messages.h"
#include "base/Report.h"
#include "base/RunContext.h"
#include "base/Status.h"
#include "base/Ui.h"
#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"
#include "host/TempFiles.h"
#include "instructions/KeptRuntime.h"
#include "jvmfile/JvmFile.h"
#include "jvmsearch/JvmAdvice.h"
#include "jvmsearch/SearchFlows.h"
#include "launch/LaunchScript.h"
#include "launcherfile/Extraction.h"
#include "launcherfile/LauncherFile.h"
#include "platform/Platform.h"
#include "process/ProcessRunner.h"
#include "variables/VariableTable.h"

namespace corvane {

namespace {

// The tag file that a JVM installer leaves in its directory.
String jvmFileIn(const String& directory) {
    String path = directory;
    ensureTrailingSeparator(path);
    return path.append("jvm");
}

void setInstallResult(std::int32_t installed, const String& jvmFile) {
    VariableTable variables;
    variables.setNumericValue(foundVariable, installed);
    variables.setPathValue(installedFileVariable, jvmFile);
}

// The path as the first word of a command line, in quotes only where the word would end too early.
String programWord(const String& path) {
    return path.find(' ') == String::npos ? path : "\"" + path + "\"";
}

// Makes the installed JVM's own file a resolved one.
void resolveJvmFile(const String& jvmFile, const String& home, bool temporary) {
    TagFile tags(jvmFile);
    tags.setJvmTags(home, jvmFile, temporary);
    tags.write(jvmFile);
}

// An author who says more than a text in the JVM message has it shown here, too.
[[noreturn]] void throwNoInstaller() {
    const JvmMessage* const message = runContext().launcherFile->jvmMessage.get();
    if (message == nullptr || (!message->details && message->link.empty()))
        throw LauncherException(loadMessage(MessageId::noJvmInstaller));
    if (runContext().cancelRequested)
        throw LauncherException(loadMessage(MessageId::canceled));
    throw LauncherException(jvmAdvice(*message), message->link);
}

// Of an installation that left a JVM, or left none: then `jvmFile` is empty.
void reportInstalled(const String& home, const String& jvmFile) {
    ReportObject("installed").add("home", home).add("jvmFile", jvmFile).write();
}

void runInstaller(const FileIndexEntry& installer, const String& target) {
    const String path = installer.extract(target);
    ProcessOptions options;
    options.collect = true;
    String out;
    String err;
    // Only the `jvm` file tells whether it went well.
    runCommand(programWord(path), target, options, &out, &err);
    removeTree(path);
}

std::int32_t launchOn(JvmFile& jvmFile, std::int16_t seconds) {
    RunContext& context = runContext();
    LaunchScript& script = *context.launcherFile->launchScript;
    if (seconds > 0) {
        setStage(Stage::running);
        setDetail(Detail::none, String());
    }
    uiHide(seconds);
    const std::uint32_t result =
        script.execute(jvmFile, &context.passThroughArgs, context.showChildConsole);
    context.endAnswered = endRequests() > 0;
    context.childStdOut = script.stdOut();
    context.childStdErr = script.errOut();
    return static_cast<std::int32_t>(result);
}

void setInstalled(const String& home) {
    const String jvmFile = jvmFileIn(home);
    reportInstalled(home, jvmFile);
    setInstallResult(1, jvmFile);
}

// Whether the installer's runtime is one that stays, and could be used or unpacked where it stays.
// Raises `LauncherException`.
bool installKept(const FileIndexEntry& installer) {
    KeptRuntime kept(installer);
    if (!kept.available())
        return false;
    if (!kept.isWhole()) {
        const String target = kept.prepare();
        if (target.empty())
            return false;
        runInstaller(installer, target);
        if (!kept.finish())
            return false;
    }
    kept.use();
    setInstalled(kept.home());
    return true;
}

}  // namespace

void initializeUi() {
    setStage(Stage::initializing);
    setDetail(Detail::none, String());
    uiShowOrHide();
}

void installJvm(InstallMode mode) {
    setInstallResult(0, String());
    if (mode == InstallMode::hidden) {
        uiHide(0);
    } else {
        uiShowOrHide();
        setStage(Stage::preparingJvm);
    }
    const FileIndexEntry* const installer =
        runContext().launcherFile->findByType(FileType::jvmInstaller);
    if (installer == nullptr)
        throwNoInstaller();
    if (mode != InstallMode::chosenDirectory && installKept(*installer))
        return;
    const String target =
        mode == InstallMode::chosenDirectory ? uiChooseDirectory() : createTempDirectory();
    if (target.empty())
        return;
    runInstaller(*installer, target);
    const String jvmFile = jvmFileIn(target);
    if (!fileExists(jvmFile)) {
        logMessage("Invalid bundled JVM. Missing 'jvm' file.", LogLevel::error);
        reportInstalled(target, "");
        return;
    }
    resolveJvmFile(jvmFile, target, true);
    setInstalled(target);
}

std::int32_t launch(const String& jvmFilePath, std::int16_t seconds) {
    if (runContext().launcherFile->launchScript == nullptr)
        return -1;
    TagFile tags(jvmFilePath);
    JvmFile jvmFile(tags);
    return launchOn(jvmFile, seconds);
}

std::int32_t internalLaunch(std::int32_t fileId, std::int16_t seconds) {
    const LauncherFile& files = *runContext().launcherFile;
    const FileIndexEntry* const entry = files.findById(fileId);
    if (files.launchScript == nullptr || entry == nullptr || entry->type != FileType::jvmFile ||
        entry->tags == nullptr) {
        logMessage(
            "Unable to launch the internal launch script with the internal JVM file. Either the "
            "launch script or the JVM file is missing from the launcher.",
            LogLevel::error);
        return -1;
    }
    JvmFile jvmFile(*entry->tags);
    return launchOn(jvmFile, seconds);
}

void executeLauncher(std::int32_t fileIndex) {
    const RunContext& context = runContext();
    const FileIndexEntry* const entry = context.launcherFile->at(fileIndex);
    if (entry == nullptr || entry->type != FileType::embeddedLauncher) {
        logMessage("Unable to execute the embedded launcher.", LogLevel::error);
        return;
    }
    const String directory = createTempDirectory();
    String line =
        programWord(entry->extract(directory)) + " -cv:orig \"" + context.launcherPath + "\"";
    for (const String& argument : context.originalArgs)
        line.append(" \"").append(argument).append('"');
    ProcessOptions options;
    options.showConsole = true;
    options.waitForCompletion = false;
    options.newConsole = true;
    runCommand(line, directory, options);
    // From here on the child, which runs from this directory, owns and removes it.
    if (context.playStart == nullptr)
        forgetTempDirectory(directory);
}

void show(const String& text) {
    logMessage(text);
    uiShowMessage(text);
}

void installJvmAction(bool showProgress, const String& exe, const String& destination) {
    ProcessOptions options;
    options.showConsole = showProgress;
    runCommand(exe, destination, options);
    const String jvmFile = jvmFileIn(destination);
    resolveJvmFile(jvmFile, destination, false);
    reportInstalled(destination, jvmFile);
    uiPrintResult(jvmFile);
}

namespace {

class LauncherWork final : public CommandWork {
  public:
    void initializeUi() override { corvane::initializeUi(); }
    void findJvm(bool showUi, bool showFailure) override { runFindJvm(showUi, showFailure); }
    void verify(bool showUi, bool showFailure, std::int32_t fileId) override {
        runVerifyCommand(showUi, showFailure, fileId);
    }
    void installJvm(InstallMode mode) override { corvane::installJvm(mode); }
    std::int32_t launch(const String& jvmFilePath, std::int16_t seconds) override {
        return corvane::launch(jvmFilePath, seconds);
    }
    std::int32_t internalLaunch(std::int32_t fileId, std::int16_t seconds) override {
        return corvane::internalLaunch(fileId, seconds);
    }
    void executeLauncher(std::int32_t fileIndex) override { corvane::executeLauncher(fileIndex); }
    void show(const String& text) override { corvane::show(text); }
};

LauncherWork work;

}  // namespace

CommandWork& launcherWork() {
    return work;
}

}  // namespace corvane
