// Rules for the instruction script.
#pragma once

#include "packer/base/Findings.h"
#include "packer/check/CheckedProject.h"

namespace corvane::pack {

// Goes every way that the script can take, with the launcher's own interpreter, and tells where one
// ends in an error, does nothing, or has no end.
void checkScript(const CheckedProject& project, Findings& findings);

}  // namespace corvane::pack
