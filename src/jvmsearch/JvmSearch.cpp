// The order of a search.
#include "jvmsearch/JvmSearch.h"

#include <string_view>

#include "base/Log.h"
#include "base/RunContext.h"
#include "base/Status.h"
#include "foundation/LiteralText.h"
#include "host/Paths.h"
#include "host/TempFiles.h"
#include "jvmsearch/Description.h"
#include "jvmsearch/Finding.h"
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

// Lets candidates be listed, and not asked, for a scope.
class Gathering {
  public:
    Gathering(VerifyClass& verifyClass, CandidateList& candidates) : verifyClass_(verifyClass) {
        verifyClass_.gathered = &candidates;
    }
    Gathering(const Gathering&) = delete;
    Gathering& operator=(const Gathering&) = delete;
    ~Gathering() { verifyClass_.gathered = nullptr; }

  private:
    VerifyClass& verifyClass_;
};

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
    const CandidateOrigin origin("-cv:javahome");
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
        match_ = searchHintsOf(jvmFile);
        if (match_ != nullptr || searchAll)
            return searchAll;
    }
    return false;
}

std::unique_ptr<JvmMatch> JvmSearch::searchHintsOf(JvmFile& jvmFile) {
    auto match = searchPlatformHints(jvmFile, verifyClass_);
    if (match == nullptr)
        match = searchPathHints(jvmFile, verifyClass_);
    if (match == nullptr)
        match = searchEnvHints(jvmFile, verifyClass_);
    if (match == nullptr)
        match = searchPlatformJvmPaths(jvmFile, verifyClass_);
    return match;
}

void JvmSearch::describeAll() {
    match_.reset();
    prepareVerifyClass();
    CandidateList candidates;
    {
        const Gathering gathering(verifyClass_, candidates);
        gatherAll();
    }
    for (const Candidate& candidate : candidates) {
        if (runContext().cancelRequested)
            return;
        describeHome(candidate, jvmFiles_, verifyClass_);
    }
}

void JvmSearch::gatherAll() {
    searchUserHome();
    bool searchAll = false;
    for (JvmFile& jvmFile : jvmFiles_) {
        searchAll = searchAll || jvmFile.tags().boolValue("SEARCH_ALL", false);
        searchHintsOf(jvmFile);
    }
    stopAtFirst_ = false;
    JvmMatchList none;
    if (searchAll)
        searchDisks(none);
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
    verifyClass_ = {classpath, name, &answers_, String(), nullptr};
}

JvmSearch& jvmSearchOf(LauncherFile& launcherFile) {
    if (launcherFile.jvmSearch == nullptr)
        launcherFile.jvmSearch = makeOwned<JvmSearch>();
    return *launcherFile.jvmSearch;
}

}  // namespace corvane
