// Rules for the message of a launcher that finds no JVM.
#pragma once

#include "packer/base/Findings.h"
#include "packer/check/CheckedProject.h"

namespace corvane::pack {

// Checks the JVM message that the launcher will show.
void checkMessage(const CheckedProject& project, Findings& findings);

}  // namespace corvane::pack
