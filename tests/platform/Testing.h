// What the tests of this floor share: a scratch directory, a variable for a scope, the child
// program.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "support/Scratch.h"

namespace corvane::testing {

// A scratch directory with paths of the standard library's kind.
class Scratch : public test::Scratch {
  public:
    // Windows path of something in it, or of itself.
    std::string path(const std::string& name = "") const {
        return (name.empty() ? test::Scratch::path() : test::Scratch::path(name)).cstr();
    }
    // Makes a file or a directory and gives its path.
    std::string file(const std::string& name, const std::string& content = "") const {
        return write(name, content).cstr();
    }
    std::string directory(const std::string& name) const {
        std::filesystem::create_directories(native(name));
        return path(name);
    }
};

// Value of a variable, if it is set.
std::optional<std::string> variable(const char* name);

// Sets an environment variable and puts the former value back; null unsets.
class ScopedVariable {
  public:
    ScopedVariable(const char* name, const char* value) : name_(name), former_(variable(name)) {
        SetEnvironmentVariableA(name, value);
    }
    ~ScopedVariable() { SetEnvironmentVariableA(name_, former_ ? former_->c_str() : nullptr); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

  private:
    const char* name_;
    std::optional<std::string> former_;
};

// What GetFileAttributesA says.
DWORD attributesOf(const std::string& path);

// Names of a listing, sorted, directories with a slash, each with a blank: "../ ./ a ".
std::string listing(const std::string& directory);

// A path as the first word of a command line, and the line of the child program (test_java.cpp).
std::string inQuotes(const std::string& path);
std::string childLine(const std::string& arguments);

// Both ends of a pipe for a child.
struct Pipe {
    Pipe();

    HandleGuard readEnd;
    HandleGuard writeEnd;
};

// A child and how its start failed, if it did.
struct Child {
    HandleGuard process;
    HandleGuard thread;
    DWORD id = 0;
    DWORD error = 0;
};

// Starts a command line, with the three streams of `startup` if there is one.
Child start(std::string commandLine, DWORD flags = 0, STARTUPINFOA* streams = nullptr,
            const char* directory = nullptr);

struct ChildResult {
    DWORD error = 0;  // of a failed start
    DWORD exitCode = 0;
    std::string out;
    std::string err;
};

// Runs a command line with both outputs piped, to its end.
ChildResult runPiped(const std::string& commandLine, const char* directory = nullptr);

// Runs the child program so.
ChildResult runChild(const std::string& arguments);

}  // namespace corvane::testing
