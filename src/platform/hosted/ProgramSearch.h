// From the text of a command line to the program file that it names.
#pragma once

#include <optional>
#include <string>

namespace corvane::hosted {

struct FoundProgram {
    std::string path;       // absolute host path
    std::size_t nameEnd{};  // where the arguments begin in the command line
};

// Finds the program as Windows does. A quoted name is taken whole; of an unquoted one each part
// that ends at a blank is tried, the shortest first. A name without a path is looked for in the
// launcher's directory, the current directory and PATH, and ".exe" is added to a name of which
// nothing is there. None, with error 2, or 5 when only a directory goes by the name.
std::optional<FoundProgram> findProgram(const std::string& commandLine);

}  // namespace corvane::hosted
