// A scratch directory of a test, gone with all that lies in it at the end of the scope.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/String.h"

namespace corvane::test {

class Scratch {
  public:
    Scratch();
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    ~Scratch();

    // The directory, or what lies in it under `name` (with backslashes), as the launcher names it.
    String path() const;
    String path(const std::string& name) const;
    // The same for the standard library.
    std::filesystem::path native(const std::string& name = "") const;

    // Writes a file, making the directories that it needs, and gives its path.
    String write(const std::string& name, std::string_view content) const;
    // The bytes of a file; or, of one written as text, its lines, whatever the system's line end.
    std::string read(const std::string& name) const;
    std::string readText(const std::string& name) const;
    bool exists(const std::string& name) const;
    // All that lies in the directory, as sorted relative paths with backslashes.
    std::vector<std::string> list() const;

  private:
    std::filesystem::path native_;
    String path_;
};

}  // namespace corvane::test
