// `JvmSearch`: the acceptable JVMs in order of preference, and the order in which one is looked
// for: the home that the user names, the hints of each JVM file, the disks.
#pragma once

#include <memory>

#include "foundation/ObjectArray.h"
#include "foundation/String.h"
#include "foundation/StringList.h"
#include "jvmfile/JvmFile.h"
#include "jvmfile/JvmMatch.h"
#include "jvmsearch/DiskSearch.h"
#include "jvmsearch/Verification.h"

namespace corvane {

class LauncherFile;

// The work list of one JVM file: homes where its executable was seen, each once, in the order of
// discovery.
struct UnverifiedMatch {
    explicit UnverifiedMatch(JvmFile* file) : jvmFile(file) {}

    JvmFile* jvmFile;  // not owned
    StringList homes;
};

class UnverifiedMatchList : public ListOf<UnverifiedMatch> {};

// Everything raises a `LauncherException` where a search can't go on: the class can't be extracted,
// a candidate can't be started, a listing breaks off, the system has no drives.
class JvmSearch final : public ExecutableHandler {
  public:
    void addJvmFile(std::unique_ptr<JvmFile> jvmFile);

    // The whole search; adds at most one match to `results`.
    void findJvm(JvmMatchList& results);
    // The disk search alone; adds every match.
    void findAll(JvmMatchList& results);

    // Prints on standard output, as a line for each, all homes that the hints and, if a JVM file
    // says so, the disks hold (docs/report.md).
    void describeAll();

    // Verifies on the spot for the first JVM file when one match is enough, else records the home;
    // true ends the scan.
    bool onExecutableFound(const String& path) override;

    // Extracts the embedded verification class, once per run, unless one is set.
    void prepareVerifyClass();
    // The class, prepared.
    VerifyClass getVerifyClass();
    void setVerifyClass(const String& classpath, const String& name);

  private:
    void searchUserHome();
    // Hints and disks; a match of the latter may go to `results` at once.
    void search(JvmMatchList& results);
    bool searchHints();
    std::unique_ptr<JvmMatch> searchHintsOf(JvmFile& jvmFile);
    void gatherAll();
    // The scan of the disks and the verification of what it found.
    void searchDisks(JvmMatchList& results);
    void addUnverified(JvmFile* jvmFile, const String& home);
    void verifyUnverified(JvmMatchList& results);

    JvmFileList jvmFiles_;
    UnverifiedMatchList unverified_;
    std::unique_ptr<JvmMatch> match_;  // of the running search, until it goes into the results
    bool stopAtFirst_ = false;
    AnswerList answers_;
    VerifyClass verifyClass_{{}, {}, &answers_, {}, nullptr};
};

// The search of a launcher file, made on its first use.
JvmSearch& jvmSearchOf(LauncherFile& launcherFile);

}  // namespace corvane
