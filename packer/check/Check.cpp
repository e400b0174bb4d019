// All rules for a project.
#include "packer/check/Check.h"

#include "packer/check/CheckedProject.h"
#include "packer/check/JarRules.h"
#include "packer/check/JvmFileRules.h"
#include "packer/check/MessageRules.h"
#include "packer/check/PayloadRules.h"
#include "packer/check/ScriptRules.h"
#include "packer/check/TagRules.h"
#include "packer/check/TemplateRules.h"

namespace corvane::pack {

Project checkProject(const std::filesystem::path& place, System system, Findings& findings) {
    Project project = readProject(place, system, findings);
    // What could not be read would be missed by the other rules.
    if (findings.hasErrors())
        return project;
    const CheckedProject checked = readCheckedProject(project, findings);
    if (findings.hasErrors())
        return project;
    checkPayload(checked, findings);
    checkTags(checked, findings);
    checkScript(checked, findings);
    checkJvmFiles(checked, findings);
    const std::vector<EmbeddedJar> jars = readJars(checked, findings);
    checkJava(checked, jars, findings);
    checkLaunchScript(checked, jars, findings);
    checkMessage(checked, findings);
    return project;
}

}  // namespace corvane::pack
