// Rules for launch scripts.
#pragma once

#include "packer/base/Findings.h"
#include "packer/check/CheckedProject.h"

namespace corvane::pack {

// Expands the templates of the launch script for each JVM file, and checks what comes of it.
void checkLaunchScript(const CheckedProject& project, Findings& findings);

}  // namespace corvane::pack
