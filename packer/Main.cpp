// corvane-pack: makes launchers out of Java applications, and tells what is in one.
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "packer/base/Errors.h"
#include "packer/base/Findings.h"
#include "packer/commands/Command.h"

namespace {

using corvane::pack::Command;

constexpr const char* version = "corvane-pack " CORVANE_VERSION "\n";

constexpr const Command* commands[] = {
    &corvane::pack::newCommand,  &corvane::pack::buildCommand,   &corvane::pack::checkCommand,
    &corvane::pack::tryCommand,  &corvane::pack::ejectCommand,   &corvane::pack::jvmCommand,
    &corvane::pack::listCommand, &corvane::pack::extractCommand, &corvane::pack::catCommand,
};

void printUsage(std::ostream& out) {
    out << "Usage: corvane-pack COMMAND ...\n\n";
    for (const Command* command : commands) {
        std::string name = command->name;
        name.resize(9, ' ');
        out << "  " << name << command->summary << '\n';
    }
    out << "\ncorvane-pack COMMAND --help tells more; corvane-pack --version tells the version.\n";
}

void printHelp(const Command& command, std::ostream& out) {
    out << "Usage: corvane-pack " << command.name << ' ' << command.synopsis << "\n\n"
        << command.help;
}

int runCommand(const Command& command, std::vector<std::string> words) {
    corvane::pack::Arguments arguments(std::move(words));
    if (arguments.takeFlag("--help") || arguments.takeFlag("-h")) {
        printHelp(command, std::cout);
        return corvane::pack::success;
    }
    try {
        return command.run(arguments);
    } catch (const corvane::pack::UsageError& error) {
        std::cerr << "corvane-pack " << command.name << ": " << error.what() << "\n\n";
        printHelp(command, std::cerr);
        return corvane::pack::usageFailure;
    }
}

int run(std::vector<std::string> words) {
    const std::string name = words.empty() ? "" : words[0];
    const auto* const command =
        std::find_if(std::begin(commands), std::end(commands),
                     [&](const Command* candidate) { return candidate->name == name; });
    if (command != std::end(commands))
        return runCommand(**command, {words.begin() + 1, words.end()});
    if (name == "--version") {
        std::cout << version;
    } else if (name == "--help" || name == "-h") {
        printUsage(std::cout);
    } else {
        std::cerr << "corvane-pack: " << (name.empty() ? "no command" : "unknown command " + name)
                  << "\n\n";
        printUsage(std::cerr);
        return corvane::pack::usageFailure;
    }
    return corvane::pack::success;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run({argv + 1, argv + argc});
    } catch (const corvane::pack::Mistake& mistake) {
        corvane::pack::Findings findings;
        findings.add(mistake);
        findings.print(std::cerr);
        return corvane::pack::failure;
    } catch (const std::exception& error) {
        std::cerr << "corvane-pack: " << error.what() << '\n';
        return corvane::pack::failure;
    }
}
