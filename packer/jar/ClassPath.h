// The jars that belong to an application: its own, and those that the Class-Path of their manifests
// names.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "packer/jar/JarFacts.h"

namespace corvane::pack {

struct ClassPathJar {
    std::filesystem::path path;
    JarFacts facts;
};

struct ClassPath {
    std::vector<ClassPathJar> jars;    // in the order in which Java searches them
    std::vector<std::string> missing;  // what is named and not there, as it is named
    std::vector<std::string> folders;  // what is named and no file
};

// `jars` are the application's own and what its author adds. Raises `PackError` when one of all
// these can't be read.
ClassPath readClassPath(const std::vector<std::filesystem::path>& jars);

}  // namespace corvane::pack
