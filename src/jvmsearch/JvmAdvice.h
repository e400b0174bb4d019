// What a user is told who has no suitable JVM: the author's JVM message, and why the homes that the
// search came upon won't do.
#pragma once

#include "base/RunContext.h"
#include "foundation/String.h"
#include "launcherfile/LauncherFile.h"

namespace corvane {

// Keeps a refusal for the user. Of each home the latest stays, since JVM files ask for less and
// less; homes beyond the eighth are passed over.
void noteRefusal(const Refusal& refusal);

// The message's text, and behind it, if it asks for details, a line for each home that was refused.
String jvmAdvice(const JvmMessage& message);

}  // namespace corvane
