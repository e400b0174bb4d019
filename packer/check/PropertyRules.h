// Rules for the lines of JVM_PROPERTIES.
#pragma once

#include "packer/base/Findings.h"
#include "packer/check/CheckedProject.h"

namespace corvane::pack {

void checkProperties(const CheckedFile& jvmFile, Findings& findings);

// Whether a JVM file may accept a Java of that number.
bool mayAccept(const TagFile& jvmFile, int feature);

}  // namespace corvane::pack
