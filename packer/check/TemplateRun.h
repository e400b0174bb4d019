// A command template as the launcher expands it, on the machine of its author: nothing is
// extracted or started, and a mistake is known by where it stands.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "launch/LaunchScript.h"
#include "launcherfile/TagFile.h"

namespace corvane::pack {

// What ends an expansion.
struct TemplateMistake {
    const char* rule = "";
    std::size_t offset = 0;  // in the author's text
    std::string text;
    std::string hint;
};

// A function that was called, and where.
struct TemplateCall {
    std::string function;
    std::vector<std::string> arguments;
    std::size_t offset = 0;
};

// A token between two equal separators, and where it begins.
struct TemplateToken {
    std::string name;
    std::size_t offset = 0;
};

struct TemplateRun {
    std::optional<TemplateMistake> mistake;
    std::vector<TemplateCall> calls;
    // What the expansion gave, without a mistake.
    std::string commandLine;
    std::string classPath;
};

// The directories that stand for those of the user's machine.
inline constexpr const char* checkedLauncherDirectory = R"(Z:\corvane-pack\launcher)";
inline constexpr const char* checkedJavaHome = R"(Z:\corvane-pack\java)";
// What stands for an extracted application archive.
inline constexpr const char* checkedArchive = R"(Z:\corvane-pack\archive)";

// Expands `text`, which is the command of `settings` or its archive, for a JVM file.
TemplateRun runTemplate(const String& text, const LaunchSettings& settings, const TagFile& jvmTags);

// The tokens that the author's text has between two separators, as one pass sees them.
std::vector<TemplateToken> tokensOf(const String& text, char separator);

}  // namespace corvane::pack
