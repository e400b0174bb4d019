// Rules for what a manifest puts together.
#pragma once

#include "packer/base/Findings.h"
#include "packer/check/CheckedProject.h"

namespace corvane::pack {

// What is missing, doubled or doesn't fit its kind.
void checkPayload(const CheckedProject& project, Findings& findings);

}  // namespace corvane::pack
