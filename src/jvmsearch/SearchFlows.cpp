// The flows around the search.
#include "jvmsearch/SearchFlows.h"

#include "base/Log.h"
#include "base/Messages.h"
#include "base/RunContext.h"
#include "base/Status.h"
#include "base/Ui.h"
#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"
#include "host/TempFiles.h"
#include "jvmsearch/Finding.h"
#include "jvmsearch/HandPick.h"
#include "jvmsearch/HintSearches.h"
#include "jvmsearch/JvmSearch.h"
#include "launcherfile/LauncherFile.h"
#include "variables/VariableTable.h"

namespace corvane {

namespace {

JvmSearch& jvmSearch() {
    return jvmSearchOf(*runContext().launcherFile);
}

void showSearch(bool show) {
    if (show) {
        setStage(Stage::searchingForJvm);
        uiShowOrHide();
    } else {
        uiHide(0);
    }
}

void setResult(std::int32_t found, const String& home, const String& file) {
    VariableTable variables;
    variables.setPathValue(homeVariable, home);
    variables.setPathValue(jvmFileVariable, file);
    variables.setNumericValue(foundVariable, found);
}

// Finds a JVM, or lets the user pick one.
void findOrPick(bool showFailure) {
    JvmMatchList results;
    jvmSearch().findJvm(results);
    if (JvmMatch* const match = results.at(0)) {
        const String file = match->writeResolvedFile();
        logMessage("Matching JVM home is " + match->home());
        logMessage("Matching JVM file is " + file);
        setResult(1, match->home(), file);
        return;
    }
    if (!showFailure || runContext().cancelRequested)
        return;
    String home;
    String file;
    if (pickJvmByHand(home, file)) {
        ReportObject("candidate").add("home", home).add("result", "picked").write();
        setResult(1, home, file);
    }
}

// Writes a match's resolved JVM file so that it outlives the run, and prints both.
void printMatch(JvmMatch& match) {
    const String file = match.writeResolvedFile();
    forgetTempFile(file);
    uiPrintResult(match.home());
    uiPrintResult(file);
}

// Gives whether the work for all JVMs went well; if not, that has been told.
bool tryForAll(const char* title, void (*work)(), bool showProgress, bool showFailure) {
    logMessage(title);
    showSearch(showProgress);
    try {
        work();
        return true;
    } catch (const LauncherException& failure) {
        const String text = loadMessage(MessageId::searchAllFailed) + failure.message;
        logMessage(text, LogLevel::error);
        if (showFailure)
            uiShowMessage(text);
        return false;
    }
}

const FileIndexEntry& entryToVerify(std::int32_t fileId) {
    const FileIndexEntry* const entry = runContext().launcherFile->findById(fileId);
    const String id = decimalText(fileId);
    if (entry == nullptr)
        throw LauncherException("Cannot verify jvm file at index " + id +
                                " because it does not exist.");
    if (entry->type != FileType::jvmFile)
        throw LauncherException(
            "To verify a JVM, use an index of a jvm file. The index passed in was " + id +
            " which corresponds to the file named " + entry->name);
    if (entry->tags == nullptr)
        throw LauncherException("The jvm file with file id " + id + " could not be read.");
    return *entry;
}

}  // namespace

void runFindJvm(bool showUi, bool showFailure) {
    logMessage("Finding a JVM");
    showSearch(showUi);
    setResult(0, String(), String());
    runContext().refusals.clear();
    try {
        findOrPick(showFailure);
    } catch (const LauncherException& failure) {
        const String text = loadMessage(MessageId::selectJvm) + " " + failure.message;
        logMessage(text, LogLevel::error);
        if (showFailure)
            uiShowMessage(text);
        throw;
    }
}

void searchAction(bool showProgress, bool showFailure) {
    try {
        runFindJvm(showProgress, showFailure);
        const VariableTable variables;
        const std::int32_t found = variables.numericValue(foundVariable);
        uiPrintResult(decimalText(found));
        if (found == 0)
            return;
        const String file = variables.stringValue(jvmFileVariable);
        uiPrintResult(variables.stringValue(homeVariable));
        uiPrintResult(file);
        forgetTempFile(file);
    } catch (const LauncherException&) {
        // `runFindJvm` has reported it.
    } catch (...) {
        logMessage("Unexpected failure in search.", LogLevel::error);
    }
}

void searchAllAction(bool showProgress, bool showFailure) {
    const auto work = [] {
        JvmMatchList results;
        jvmSearch().findAll(results);
        uiPrintResult(decimalText(results.count()));
        for (JvmMatch& match : results)
            printMatch(match);
    };
    if (!tryForAll("Finding all matching JVMs", work, showProgress, showFailure))
        uiPrintResult("0");
}

void describeAllAction(bool showProgress, bool showFailure) {
    tryForAll(
        "Describing all JVMs", [] { jvmSearch().describeAll(); }, showProgress, showFailure);
}

void verifyJvmAction(bool showProgress, bool showFailure, TagFile& jvmFile, const String& jvmHome) {
    VariableTable variables;
    variables.setNumericValue(foundVariable, 0);
    if (showProgress)
        setDetail(Detail::verifying, jvmFile.value("DESC", 0));
    JvmFile file(jvmFile);
    const VerifyClass verifyClass = jvmSearch().getVerifyClass();
    const CandidateOrigin origin("VERIFY");
    const auto match = jvmHome.empty() ? verifyJvmHomeTag(file, verifyClass)
                                       : verifyHome(file, jvmHome, verifyClass);
    if (match == nullptr) {
        if (showFailure)
            uiShowMessage(loadMessage(MessageId::jvmNotValid));
        logMessage("In VERIFY, the jvm is invalid.");
        return;
    }
    const String home = file.tag("JVM_HOME");
    variables.setNumericValue(foundVariable, 1);
    variables.setPathValue(homeVariable, home);
    logMessage("After VERIFY, the jvm home is " + home);
}

void runVerifyCommand(bool showUi, bool showFailure, std::int32_t fileId) {
    showSearch(showUi);
    verifyJvmAction(showUi, showFailure, *entryToVerify(fileId).tags, runContext().javaHome);
}

}  // namespace corvane
