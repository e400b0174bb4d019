// The description of a home by all that the verification class can say of it.
#pragma once

#include "jvmfile/JvmFile.h"
#include "jvmsearch/Finding.h"
#include "jvmsearch/Verification.h"

namespace corvane {

// Prints the object of a candidate on standard output: whether one of the JVM files accepts it, and
// the value of every property that one of them names or that people ask for. The home is started
// once.
void describeHome(const Candidate& candidate, JvmFileList& jvmFiles,
                  const VerifyClass& verifyClass);

}  // namespace corvane
