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
#include "jvmsearch/Finding.h"

namespace corvane {

// What the verification class runs from and is called, in the form of a command line.
struct VerifyClass {
    String classpath;  // as one argument of the template function CP
    String name;       // written on the command line unchanged
    // Not owned. Where a candidate with a time limit is remembered.
    AnswerList* answers = nullptr;
    String directory;  // where it starts; empty for the launcher's
    // Not owned. Where candidates go that are only listed; null where they are asked.
    CandidateList* gathered = nullptr;
};

// The whole check of one candidate: its executable exists, and the class, run on it, reports what
// JVM_PROPERTIES asks for. Null if not. Raises `LauncherException` when the candidate can't be
// started, which ends the whole search.
std::unique_ptr<JvmMatch> verifyHome(JvmFile& jvmFile, const String& home,
                                     const VerifyClass& verifyClass);

// The template of a command that runs the class on a candidate; the names of properties go behind
// it, each with a blank in front.
String verificationCommand(const VerifyClass& verifyClass);

// What the class said of a candidate, or why it said nothing.
struct Statement {
    String output;
    const char* silence = nullptr;  // a result of `Finding` without a comparison
    String reason;
};

// Runs a command on the candidate in JVM_HOME, with a limit in seconds or (0) without.
Statement listen(const String& command, JvmFile& jvmFile, std::uint32_t limit,
                 const VerifyClass& verifyClass);

// The last words of a candidate that gave no report, as a reason.
String lastWords(const String& output);

// The comparison of the class's output alone. What doesn't fit goes to `refusal`, if that is given.
bool matchProperties(const String& output, const JvmPropertyList& properties,
                     Refusal* refusal = nullptr);

}  // namespace corvane
