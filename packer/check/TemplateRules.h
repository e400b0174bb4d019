// Rules for launch scripts.
#pragma once

#include "packer/base/Findings.h"
#include "packer/check/CheckedProject.h"
#include "packer/check/JarRules.h"

namespace corvane::pack {

// Expands the templates of the launch script for each JVM file, and checks what comes of it. `jars`
// are the embedded ones that can be read.
void checkLaunchScript(const CheckedProject& project, const std::vector<EmbeddedJar>& jars,
                       Findings& findings);

}  // namespace corvane::pack
