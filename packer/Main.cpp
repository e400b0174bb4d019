// corvane-pack: appends a payload to a copy of the launcher, and lists the payload of one.
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "packer/Commands.h"
#include "packer/Paths.h"
#include "packer/PayloadWriter.h"
#include "platform/Platform.h"

namespace {

namespace fs = std::filesystem;
using corvane::pack::pathOf;

constexpr const char* version = "corvane-pack " CORVANE_VERSION "\n";

constexpr const char* usage =
    "Usage: corvane-pack build MANIFEST -o FILE [--stub LAUNCHER]\n"
    "       corvane-pack list FILE\n"
    "       corvane-pack --help | --version\n"
    "\n"
    "build  Appends the files that MANIFEST names to a copy of the bare launcher and writes\n"
    "       the result to FILE. The bare launcher is LAUNCHER, by default the launcher beside\n"
    "       corvane-pack.\n"
    "list   Prints the kind of a packed launcher and the position, id, type, size and name of\n"
    "       each file in it.\n";

constexpr int usageError = 2;

// Words for a command line that makes no sense.
struct UsageError {
    std::string message;
};

// The launcher beside this program, with the same extension.
fs::path launcherBeside() {
    char path[4096] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    const fs::path own = pathOf(corvane::nativePath(path));
    return (own.parent_path() / "launcher").replace_extension(own.extension());
}

void buildCommand(const std::vector<std::string>& arguments) {
    std::string manifest;
    std::string output;
    std::string stub;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const bool takesValue = arguments[i] == "-o" || arguments[i] == "--stub";
        if (takesValue && i + 1 == arguments.size())
            throw UsageError{arguments[i] + " needs a file name"};
        if (arguments[i] == "-o")
            output = arguments[++i];
        else if (arguments[i] == "--stub")
            stub = arguments[++i];
        else if (manifest.empty() && !arguments[i].starts_with("-"))
            manifest = arguments[i];
        else
            throw UsageError{"unexpected argument " + arguments[i]};
    }
    if (manifest.empty() || output.empty())
        throw UsageError{"build needs a manifest and -o FILE"};
    corvane::pack::build(pathOf(manifest), stub.empty() ? launcherBeside() : pathOf(stub),
                         pathOf(output));
}

void listCommand(const std::vector<std::string>& arguments) {
    if (arguments.size() != 1)
        throw UsageError{"list needs one file"};
    corvane::pack::list(pathOf(arguments[0]), std::cout);
}

void run(const std::vector<std::string>& arguments) {
    const std::string command = arguments.empty() ? "" : arguments[0];
    const std::vector<std::string> rest(arguments.begin() + !arguments.empty(), arguments.end());
    if (command == "build")
        buildCommand(rest);
    else if (command == "list")
        listCommand(rest);
    else if (command == "--help" || command == "-h")
        std::cout << usage;
    else if (command == "--version")
        std::cout << version;
    else
        throw UsageError{command.empty() ? "no command" : "unknown command " + command};
}

}  // namespace

int main(int argc, char** argv) {
    try {
        run({argv + 1, argv + argc});
        return 0;
    } catch (const UsageError& error) {
        std::cerr << "corvane-pack: " << error.message << "\n\n" << usage;
        return usageError;
    } catch (const std::exception& error) {
        std::cerr << "corvane-pack: " << error.what() << '\n';
        return 1;
    }
}
