// The searches of one JVM file: its own home, registry hints, path hints, hints in environment
// variables, the platform's JVM places.
#pragma once

#include <memory>

#include "jvmfile/JvmFile.h"
#include "jvmfile/JvmMatch.h"
#include "jvmsearch/Verification.h"

namespace corvane {

// Each verifies its candidates in turn and gives the first match, or null. A file without
// JVM_PROPERTIES takes no part. Raise `LauncherException`, which ends the whole search: an unknown
// hive, a system without drives, a candidate that can't be started.
std::unique_ptr<JvmMatch> verifyJvmHomeTag(JvmFile& jvmFile, const VerifyClass& verifyClass);
std::unique_ptr<JvmMatch> searchPlatformHints(JvmFile& jvmFile, const VerifyClass& verifyClass);
std::unique_ptr<JvmMatch> searchPathHints(JvmFile& jvmFile, const VerifyClass& verifyClass);
std::unique_ptr<JvmMatch> searchEnvHints(JvmFile& jvmFile, const VerifyClass& verifyClass);
std::unique_ptr<JvmMatch> searchPlatformJvmPaths(JvmFile& jvmFile, const VerifyClass& verifyClass);

}  // namespace corvane
