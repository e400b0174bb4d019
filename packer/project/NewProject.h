// Writing a project for an application, which can be built as it stands.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "packer/jar/Application.h"
#include "packer/runtime/ImageMaking.h"
#include "packer/runtime/RuntimeImage.h"

namespace corvane::pack {

struct NewProject {
    std::string name;              // of the launcher and of the project's files
    std::string title;             // as a user reads it
    std::filesystem::path folder;  // which is made, or is empty
    bool tool = false;             // a command-line tool
    // The Java that it brings along, but for the jars; without it none.
    std::optional<ImageRequest> runtime = std::nullopt;
};

struct WrittenProject {
    std::string jvmWord;  // of the JVM file
    bool copied = false;  // the jars, since they lie too far from the project to be named
    std::vector<std::string> modules;  // of the Java that it brings along
    RuntimeImage runtime;              // that Java, if there are modules
};

// Raises `PackError`; nothing is left of the project then.
WrittenProject writeProject(const NewProject& project, const Application& application);

// The word for the JVM file that accepts `java` and later ones: the next higher one that ships, or
// the highest.
std::string jvmWordFor(int java);

// The text of a launch script.
std::string launchScript(const NewProject& project, const Application& application);

}  // namespace corvane::pack
