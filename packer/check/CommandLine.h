// A finished command line, as Java will read it.
#pragma once

#include <string>
#include <vector>

#include "packer/base/Findings.h"

namespace corvane::pack {

struct JavaCommand {
    std::string program;
    std::string behindProgram;  // the rest of the line as it stands
    // What is started; at most one of them is there.
    std::string mainClass;
    std::string jar;
    std::string module;
};

// Divides a line whose program stands in quotes.
JavaCommand readJavaCommand(const std::string& line);

// Tells what `line` can't mean, at `place`. `home` is the directory of the JVM in it, `executable`
// the path of its program below that.
void checkCommandLine(const std::string& line, const std::string& home,
                      const std::string& executable, const Place& place, Findings& findings);

}  // namespace corvane::pack
