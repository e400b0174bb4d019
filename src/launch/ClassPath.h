// `ClassPath`: the class path of one launch, from options, list files, the JVM file, the template's
// own entries and the embedded archives.
#pragma once

#include <optional>

#include "foundation/String.h"
#include "foundation/StringList.h"
#include "jvmfile/JvmFile.h"
#include "launch/LaunchScript.h"

namespace corvane {

class ClassPath {
  public:
    // With `inEnvironment` entries stand without their outer quotes. The rest outlives the object.
    ClassPath(const JvmFile& jvmFile, const LaunchSettings& settings, bool inEnvironment)
        : jvmFile_(jvmFile), settings_(settings), inEnvironment_(inEnvironment) {}

    // Joins all parts, in their order; `arguments` are those of the function CP, `archive` the
    // launch script's own part. The embedded archives are extracted anew, into a new temporary
    // directory. Raises `LauncherException`.
    void join(const StringList& arguments, const String& archive);

    // What was joined, never empty, so that no Java takes the next word for it.
    const String& text() const noexcept { return text_; }

    // Sets the variable that the JVM file names; a JVM file that names none is an error in the log.
    void passInEnvironment() const;

  private:
    void appendClasspath(String& classpath, const String& part) const;
    void addClasspathEntry(const String& option);
    String entry(const String& text) const;
    std::optional<String> readListFile(const String& path) const;
    String launcherListFile(const char* extension) const;
    String embeddedArchivesClasspath() const;

    const JvmFile& jvmFile_;
    const LaunchSettings& settings_;
    const bool inEnvironment_;
    String text_;
};

}  // namespace corvane
