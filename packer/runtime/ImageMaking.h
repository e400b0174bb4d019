// Making of a runtime image by the tools of a JDK.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace corvane::pack {

struct ImageRequest {
    std::vector<std::filesystem::path> jars;  // of the application, all of them
    std::filesystem::path javaHome;           // of the JDK; empty: JAVA_HOME, else what PATH finds
    // The `jmods` folder of a JDK for another system, of the same version; empty: the JDK's own.
    std::filesystem::path jmods;
    std::vector<std::string> modules;  // beside those that the jars are seen to need
};

// The modules of a list with commas.
std::vector<std::string> modulesIn(const std::string& list);

// Asks `jdeps` for the modules that the jars need, if there are any, has `jlink` make an image of
// them in `output`, which must not exist, and gives the modules. Raises `PackError` with what the
// tools said; nothing is left in `output` then.
std::vector<std::string> makeRuntimeImage(const ImageRequest& request,
                                          const std::filesystem::path& output);

}  // namespace corvane::pack
