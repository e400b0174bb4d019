// The order of a search.
#include "jvmsearch/JvmSearch.h"

#include <string_view>

#include "base/Log.h"
#include "base/RunContext.h"
#include "base/Status.h"
#include "foundation/LiteralText.h"
#include "host/Paths.h"
#include "host/TempFiles.h"
#include "jvmsearch/HintSearches.h"
#include "jvmsearch/Remembered.h"
#include "launcherfile/LauncherFile.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

// Whether a class lies there that goes by the embedded one's name, or by that of a class inside it.
bool holdsVerifyClass(const String& directory) {
    WIN32_FIND_DATAA entry;
    const FindGuard find(FindFirstFileA((directory + "\\*").cstr(), &entry));
    bool more = static_cast<bool>(find);
    while (more) {
        const std::string_view name = entry.cFileName;
        if (pathBeginsWith(name, "Verify.class") || pathBeginsWith(name, "Verify$"))
            return true;
        more = FindNextFileA(find.get(), &entry) != FALSE;
    }
    return false;
}

}  // namespace

void JvmSearch::addJvmFile(std::unique_ptr<JvmFile> jvmFile) {
    jvmFiles_.add(std::move(jvmFile));
}

void JvmSearch::findJvm(JvmMatchList& results) {
    match_.reset();
    if (!runContext().javaHome.empty()) {
        prepareVerifyClass();
        searchUserHome();
    }
    const bool mayRemember = !runContext().inputFileGiven;
    if (match_ == nullptr && mayRemember)
        match_ = recallMatch(jvmFiles_);
    if (match_ == nullptr) {
        search(results);
        const JvmMatch* const found = match_ != nullptr ? match_.get() : results.at(0);
        if (found != nullptr && mayRemember)
            rememberMatch(jvmFiles_, *found);
    }
    if (match_ != nullptr)
        results.add(std::move(match_));
}

void JvmSearch::search(JvmMatchList& results) {
    prepareVerifyClass();
    const bool searchAll = searchHints();
    if (match_ == nullptr && searchAll) {
        stopAtFirst_ = true;
        searchDisks(results);
    }
}

void JvmSearch::findAll(JvmMatchList& results) {
    match_.reset();
    prepareVerifyClass();
    stopAtFirst_ = false;
    searchDisks(results);
}

// The first JVM file that accepts the home wins.
void JvmSearch::searchUserHome() {
    const String& home = runContext().javaHome;
    if (home.empty())
        return;
    logMessage("Checking user specified Java home directory => " + home);
    for (JvmFile& jvmFile : jvmFiles_) {
        match_ = verifyHome(jvmFile, home, verifyClass_);
        if (match_ != nullptr)
            return;
    }
}

// Tries the hints of each JVM file up to the first that asks for the disks; gives whether one did.
bool JvmSearch::searchHints() {
    logMessage("Initiating JVM search based on hints...");
    for (JvmFile& jvmFile : jvmFiles_) {
        const bool searchAll = jvmFile.tags().boolValue("SEARCH_ALL", false);
        const StatusScope scope;
        setDetail(Detail::searchingFor, jvmFile.tag("DESC"));
        match_ = searchPlatformHints(jvmFile, verifyClass_);
        if (match_ == nullptr)
            match_ = searchPathHints(jvmFile, verifyClass_);
        if (match_ == nullptr)
            match_ = searchPlatformJvmPaths(jvmFile, verifyClass_);
        if (match_ != nullptr || searchAll)
            return searchAll;
    }
    return false;
}

void JvmSearch::prepareVerifyClass() {
    if (!verifyClass_.classpath.empty() || !verifyClass_.name.empty())
        return;
    String path;
    for (const FileIndexEntry& file : *runContext().launcherFile) {
        if (file.type == FileType::verifyClass)
            path = file.extract(createTempDirectory());
    }
    if (path.empty())
        return;
    setVerifyClass("\"" + literal(path) + "\"", "\"Verify\"");
    // Java looks for a class in the directory that it starts in first, which may be anybody's.
    if (holdsVerifyClass(parentDirectory(runContext().launcherPath)))
        verifyClass_.directory = parentDirectory(path);
}

VerifyClass JvmSearch::getVerifyClass() {
    prepareVerifyClass();
    return verifyClass_;
}

void JvmSearch::setVerifyClass(const String& classpath, const String& name) {
    verifyClass_ = {classpath, name, &answers_, String()};
}

JvmSearch& jvmSearchOf(LauncherFile& launcherFile) {
    if (launcherFile.jvmSearch == nullptr)
        launcherFile.jvmSearch = makeOwned<JvmSearch>();
    return *launcherFile.jvmSearch;
}

}  // namespace corvane
