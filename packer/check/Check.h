// All rules for a project.
#pragma once

#include <filesystem>

#include "packer/base/Findings.h"
#include "packer/project/Project.h"

namespace corvane::pack {

// Reads a project and tells what is wrong with it, as far as it can be told before a run. Raises
// `PackError` when `place` holds none.
Project checkProject(const std::filesystem::path& place, System system, Findings& findings);

}  // namespace corvane::pack
