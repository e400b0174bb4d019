// Rules for the tags of any file.
#pragma once

#include "packer/base/Findings.h"
#include "packer/check/CheckedProject.h"

namespace corvane::pack {

// Checks that each tag is one that is read, and has as many values and such ones as it may have.
void checkTags(const CheckedProject& project, Findings& findings);

}  // namespace corvane::pack
