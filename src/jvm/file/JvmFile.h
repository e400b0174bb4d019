// `JvmFile`: one kind of JVM that the application accepts, a tag file (docs/jvm-files.md) with the
// searches for it and the verification of a candidate.
#pragma once

#include <memory>

#include "foundation/ObjectArray.h"
#include "foundation/String.h"
#include "foundation/StringList.h"
#include "jvm/file/JvmMatch.h"
#include "launch/template/TokenResolver.h"
#include "launcherfile/TagFile.h"

namespace corvane {

// What the verification class runs from and is called, in the form of a command line.
struct VerifyClass {
    String classpath;  // as one argument of the template function CP
    String name;       // written on the command line unchanged
};

// One line of JVM_PROPERTIES: a property and the value that it must have, or, in front of "...",
// the value's beginning.
struct JvmProperty {
    String name;
    String pattern;
};

class JvmPropertyList : public ListOf<JvmProperty> {};

// Points to its tags, which are not read-only: every verification leaves its candidate in JVM_HOME.
class JvmFile final : public TokenResolver {
  public:
    explicit JvmFile(TagFile& tags) : tags_(&tags) {}

    TagFile& tags() const noexcept { return *tags_; }
    String tag(const char* name) const { return tags_->value(name, 0); }
    // Path of the Java executable below the home.
    String exePath() const { return tag("JVM_EXE"); }

    // Replaces @NAME@ by the tag NAME; an unknown tag is empty, and JVM_HOME loses a trailing
    // separator.
    void resolveToken(String& text, char separator, std::size_t start, std::size_t end) override;
    String expandTokens(const String& text);

    // The searches (jvm/search). Each verifies its candidates in turn and gives the first match, or
    // null. A file without JVM_PROPERTIES takes no part. Raise `LauncherException`, which ends the
    // whole search: an unknown hive, a system without drives, a candidate that can't be started.
    std::unique_ptr<JvmMatch> verifyJvmHomeTag(const VerifyClass& verifyClass);
    std::unique_ptr<JvmMatch> searchPlatformHints(const VerifyClass& verifyClass);
    std::unique_ptr<JvmMatch> searchPathHints(const VerifyClass& verifyClass);
    std::unique_ptr<JvmMatch> searchPlatformJvmPaths(const VerifyClass& verifyClass);

    // The whole check of one candidate (jvm/search): its executable exists, and the verification
    // class, run on it, reports what JVM_PROPERTIES asks for. Null if not. Raises
    // `LauncherException` when the candidate can't be started.
    std::unique_ptr<JvmMatch> verifyHome(const String& home, const VerifyClass& verifyClass);

    // The run of the class alone, and the comparison of its output alone.
    bool runVerification(const String& home, const VerifyClass& verifyClass);
    bool matchProperties(const String& output, const JvmPropertyList& properties) const;

  private:
    bool hasProperties() const;
    std::unique_ptr<JvmMatch> searchOnDrives(const StringList& drives, const String& hint,
                                             const VerifyClass& verifyClass);
    std::unique_ptr<JvmMatch> searchBesideLauncher(const String& hint,
                                                   const VerifyClass& verifyClass);

    TagFile* tags_;  // not owned
};

class JvmFileList : public ListOf<JvmFile> {};

}  // namespace corvane
