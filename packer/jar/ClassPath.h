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

// Raises `PackError` when one of the jars can't be read.
ClassPath readClassPath(const std::filesystem::path& jar);

}  // namespace corvane::pack
