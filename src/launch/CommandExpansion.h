// `CommandExpansion`: one expansion of a launch script's command template for one JVM, with the
// functions that a template may call.
#pragma once

#include "foundation/String.h"
#include "foundation/StringList.h"
#include "jvmfile/JvmFile.h"
#include "launch/LaunchScript.h"
#include "template/TokenResolver.h"

namespace corvane {

class CommandExpansion final : public TokenResolver {
  public:
    // What a template may call.
    struct Function {
        const char* name;
        std::int32_t fewest;  // arguments
        std::int32_t most;
        const char* wrongNumber;
        String (CommandExpansion::*evaluate)(const StringList& arguments);

        bool takes(std::int32_t count) const { return count >= fewest && count <= most; }
    };
    static const Function functions[10];

    // Both outlive the expansion.
    CommandExpansion(const LaunchSettings& settings, JvmFile& jvmFile)
        : settings_(settings), jvmFile_(jvmFile) {}

    // The three passes: functions, tags of the JVM file, environment variables. Raises
    // `LauncherException`.
    String command();

    // Replaces one %FUNCTION%(arguments) or one #VARIABLE#.
    void resolveToken(String& text, char separator, std::size_t start, std::size_t end) override;

  private:
    static const Function& findFunction(const String& text, const String& name);

    // The template functions, with as many arguments as their table allows.
    String replace(const StringList& arguments);
    String runtimeSystemProperties(const StringList& arguments);
    String runtimeJavaArgs(const StringList& arguments);
    String systemProperty(const StringList& arguments);
    String classpath(const StringList& arguments);
    String ifExists(const StringList& arguments);
    String launcherFile(const StringList& arguments);
    String launcherDir(const StringList& arguments);
    String applicationArchive(const StringList& arguments);
    String tempDir(const StringList& arguments);

    String systemPropertyText(const String& name, const String& value);

    const LaunchSettings& settings_;
    JvmFile& jvmFile_;
};

}  // namespace corvane
