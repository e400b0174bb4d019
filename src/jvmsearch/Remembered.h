// The home that a former run found, kept in a registry value (REMEMBER).
#pragma once

#include <memory>

#include "jvmfile/JvmFile.h"
#include "jvmfile/JvmMatch.h"

namespace corvane {

// The home that the first of the JVM files remembers whose executable is as it was, provided that
// the file and those in front of it are as they were; null without one. Nothing is asked or
// started. Raises a `LauncherException` for a REMEMBER that names no hive.
std::unique_ptr<JvmMatch> recallMatch(const JvmFileList& jvmFiles);

// Keeps a home for the JVM file that accepted it, if that says where. A failure is a warning in the
// log. Raises as above.
void rememberMatch(const JvmFileList& jvmFiles, const JvmMatch& match);

}  // namespace corvane
