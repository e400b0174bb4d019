// What the files of one jar say of the application.
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "packer/jar/JarManifest.h"
#include "packer/jar/ZipArchive.h"

namespace corvane::pack {

struct JarFacts {
    JarManifest manifest;
    int java = 0;             // the Java that its classes need; 0 if it holds none
    std::string newestClass;  // one that needs it
    std::string moduleMainClass;
    std::set<std::string> classes;  // as Java code names them; not those of jars inside
    // Those of them with a main method, and what these extend.
    std::map<std::string, std::vector<std::string>> mainClasses;
    std::string windowSign;  // what shows that it may draw a window, or empty if that is ruled out
    bool usesJavaFx = false;
    bool holdsJars = false;           // which only a class loader of its own can use
    std::vector<std::string> faults;  // classes that are none
};

// Reads the jar in `bytes`, known as `name`. Raises `PackError` when it is damaged.
JarFacts readJar(const std::string& name, std::string_view bytes);
JarFacts readJar(const std::filesystem::path& path);

}  // namespace corvane::pack
