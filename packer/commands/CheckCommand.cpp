// `corvane-pack check`.
#include <iostream>

#include "packer/base/Paths.h"
#include "packer/check/Check.h"
#include "packer/commands/Command.h"
#include "packer/project/Project.h"

namespace corvane::pack {

namespace {

void tell(const Project& project, const Findings& findings, std::ostream& out) {
    findings.print(out);
    if (findings.all().empty())
        out << project.manifestPath.string() << ": no mistakes found\n";
}

int run(Arguments& arguments) {
    const bool asJson = arguments.takeFlag("--json");
    const bool strict = arguments.takeFlag("--werror");
    const System system = takeSystem(arguments).value_or(System::windows);
    Findings findings;
    const Project project = checkProject(takeProject(arguments), system, findings);
    if (asJson)
        findings.printJson(std::cout);
    else
        tell(project, findings, std::cout);
    return findings.hasErrors() || (strict && !findings.all().empty()) ? failure : success;
}

}  // namespace

const Command checkCommand = {
    "check", "[FOLDER|MANIFEST] [--for windows|host] [--json] [--werror]",
    "finds the mistakes in a project",
    "Reads the manifest and the files that it names as the launcher will, and tells what is wrong\n"
    "with them, with file, line and column. The exit value is 1 if there are errors.\n"
    "\n"
    "  FOLDER      holds one *.manifest; the current folder if nothing is named\n"
    "  --for       the system for which it is made: windows (the default), or host\n"
    "  --json      one JSON array of all findings\n"
    "  --werror    warnings count as errors\n",
    run};

}  // namespace corvane::pack
