// What the tests of this floor share: a scratch directory, a variable for a scope, the child
// program.
#pragma once

#include <string>
#include <vector>

#include "platform/Platform.h"

namespace corvane::testing {

// A fresh directory under the temporary path, removed with all that is in it.
class Scratch {
  public:
    Scratch();
    ~Scratch();
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    // Windows path of something in it, or of itself.
    std::string path(const std::string& name = "") const {
        return name.empty() ? path_ : path_ + "\\" + name;
    }
    // Makes a file and gives its path.
    std::string file(const std::string& name, const std::string& content = "") const;
    std::string directory(const std::string& name) const;

  private:
    std::string path_;
};

// Sets an environment variable and puts the former value back; null unsets.
class ScopedVariable {
  public:
    ScopedVariable(const char* name, const char* value);
    ~ScopedVariable();
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

  private:
    std::string name_;
    std::string former_;
    bool wasSet_;
};

// Value of a variable; "(unset)" if it isn't set.
std::string variable(const char* name);

std::string contentOf(const std::string& path);

// Names of a listing, sorted, directories with a trailing backslash, without "." and "..".
std::vector<std::string> listing(const std::string& pattern);

// Windows path of the child program, without ".exe".
std::string childProgram();

// A path as the first word of a command line, and the child program's line with its arguments, of
// which the first is its command.
std::string inQuotes(const std::string& path);
std::string childLine(const std::string& arguments);

struct ChildResult {
    bool started = false;
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
