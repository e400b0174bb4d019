// Names that a file may have on every system.
#pragma once

#include <string>

namespace corvane::pack {

// What keeps `name` from being a file's name in a folder, on Windows or elsewhere: "it holds a
// separator". Empty if nothing does.
std::string fileNameFault(const std::string& name);

// A name in the form in which Windows compares names, as far as ASCII goes.
std::string foldedName(std::string name);

}  // namespace corvane::pack
