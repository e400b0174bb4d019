// A command of the tool.
#pragma once

#include "packer/base/Arguments.h"

namespace corvane::pack {

// Exit values: what every build tool of today gives.
constexpr int success = 0;
constexpr int failure = 1;       // the command could not do its work, or found errors
constexpr int usageFailure = 2;  // the command line makes no sense

struct Command {
    const char* name;
    const char* synopsis;  // what stands behind the name: "MANIFEST -o FILE"
    const char* summary;   // one line, for the list of all commands
    const char* help;      // whole lines, behind the synopsis in `corvane-pack NAME --help`
    // Gives the exit value. Raises `UsageError` or `PackError`.
    int (*run)(Arguments& arguments);
};

// The commands, each in a file of its own. To add one, name it here and in Main.cpp.
extern const Command buildCommand;
extern const Command checkCommand;
extern const Command catCommand;
extern const Command ejectCommand;
extern const Command extractCommand;
extern const Command jvmCommand;
extern const Command listCommand;
extern const Command newCommand;
extern const Command tryCommand;

}  // namespace corvane::pack
