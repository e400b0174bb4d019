// How the application in a jar is started, as far as its files say it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "packer/jar/ClassPath.h"

namespace corvane::pack {

struct Application {
    ClassPath classPath;
    std::string mainClass;
    bool asJar = false;  // by `java -jar`: what the manifest says is heeded by that alone
    std::vector<std::string> options;  // of Java, which stand for such words of the manifest
    int java = 0;                      // the least Java that it runs on
    std::string newestClass;           // a class that needs it
    std::string windowSign;  // what shows that it may draw a window, or empty if that is ruled out
    std::string title;       // the next three are empty where the manifest doesn't tell them
    std::string version;
    std::string vendor;
    std::vector<std::string> warnings;
};

// `jars` are that of the application and those that it needs beside its Class-Path; `mainClass`
// overrules the first. Raises `PackError` when a jar is damaged or no main class is sure; it names
// those that there are.
Application readApplication(const std::vector<std::filesystem::path>& jars,
                            const std::optional<std::string>& mainClass);

}  // namespace corvane::pack
