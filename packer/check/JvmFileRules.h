// Rules for JVM files.
#pragma once

#include "packer/base/Findings.h"
#include "packer/check/CheckedProject.h"

namespace corvane::pack {

// Checks each JVM file of the project, and what they mean to each other.
void checkJvmFiles(const CheckedProject& project, Findings& findings);

}  // namespace corvane::pack
