// The verification of a candidate home: the verification class is run on it, and what it reports is
// compared with what the JVM file asks for.
#pragma once

#include <memory>

#include "base/RunContext.h"
#include "foundation/String.h"
#include "jvmfile/JvmFile.h"
#include "jvmfile/JvmMatch.h"
#include "jvmfile/JvmProperty.h"
#include "jvmsearch/Asking.h"

namespace corvane {

// What the verification class runs from and is called, in the form of a command line.
struct VerifyClass {
    String classpath;               // as one argument of the template function CP
    String name;                    // written on the command line unchanged
    AnswerList* answers = nullptr;  // not owned; where a candidate with a time limit is remembered
    String directory;               // where it starts; empty for the launcher's
};

// The whole check of one candidate: its executable exists, and the class, run on it, reports what
// JVM_PROPERTIES asks for. Null if not. Raises `LauncherException` when the candidate can't be
// started, which ends the whole search.
std::unique_ptr<JvmMatch> verifyHome(JvmFile& jvmFile, const String& home,
                                     const VerifyClass& verifyClass);

// The run of the class alone; leaves the candidate in the file's JVM_HOME. Raises as above.
bool runVerification(JvmFile& jvmFile, const String& home, const VerifyClass& verifyClass);

// The comparison of the class's output alone. What doesn't fit goes to `refusal`, if that is given.
bool matchProperties(const String& output, const JvmPropertyList& properties,
                     Refusal* refusal = nullptr);

}  // namespace corvane
