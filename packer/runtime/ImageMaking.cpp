// Calls of a JDK's tools.
#include "packer/runtime/ImageMaking.h"

#include <algorithm>

#include "base/RunContext.h"
#include "foundation/Exceptions.h"
#include "host/Environment.h"
#include "packer/base/Errors.h"
#include "packer/base/Paths.h"
#include "platform/Platform.h"
#include "process/ProcessRunner.h"

namespace corvane::pack {

namespace {

namespace fs = std::filesystem;

// Names, which no blank or quote stands in, and paths.
class CommandLine {
  public:
    explicit CommandLine(const std::string& program) : text_(quoted(program)) {}

    CommandLine& add(const std::string& word) {
        text_ += " " + quoted(word);
        return *this;
    }
    const char* text() const { return text_.c_str(); }

  private:
    // A backslash in front of the closing quote would take it for a part of the word.
    static std::string quoted(const std::string& word) {
        return '"' + word + (word.ends_with('\\') ? "\\\"" : "\"");
    }

    std::string text_;
};

std::string toolOf(const fs::path& javaHome, const char* name) {
    const String variable = getEnvironmentValue("JAVA_HOME");
    const fs::path home = !javaHome.empty() ? javaHome : pathOf(variable.cstr());
    return home.empty() ? name : (home / "bin" / name).string();
}

// Gives what the tool wrote to standard output. `mend` is for a tool that fails.
std::string runTool(const char* name, const CommandLine& line, const std::string& mend) {
    // There is no front end that could show the tool's progress.
    runContext().silent = true;
    ProcessOptions options;
    options.collect = true;
    String out;
    String err;
    try {
        const std::uint32_t exitCode = runCommand(line.text(), "", options, &out, &err);
        if (exitCode != 0)
            throw PackError(std::string(name) + " failed:\n" + out.cstr() + err.cstr() + mend);
    } catch (const LauncherException& failure) {
        throw PackError(std::string(name) +
                        " of a JDK can't be started; name one with --jdk, or set JAVA_HOME: " +
                        failure.message.cstr());
    }
    return out.cstr();
}

std::vector<std::string> neededModules(const ImageRequest& request) {
    if (request.jars.empty())
        return {"java.base"};
    CommandLine line(toolOf(request.javaHome, "jdeps"));
    line.add("--ignore-missing-deps").add("--print-module-deps").add("--multi-release").add("base");
    for (const fs::path& jar : request.jars)
        line.add(jar.string());
    return modulesIn(runTool("jdeps", line, "name the modules yourself: --modules java.se"));
}

void checkJmods(const fs::path& jmods) {
    if (!jmods.empty() && !fs::exists(jmods / "java.base.jmod"))
        throw PackError(jmods.string() +
                        ": there is no java.base.jmod; name the jmods folder of a "
                        "JDK for the launcher's system");
}

// Removes a folder unless all went well.
class Unfinished {
  public:
    explicit Unfinished(fs::path path) : path_(std::move(path)) {
        if (fs::exists(path_))
            throw PackError(path_.string() +
                            ": is there already; remove it or name another folder");
    }
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;
    ~Unfinished() {
        std::error_code ignored;
        if (!path_.empty())
            fs::remove_all(path_, ignored);
    }

    void keep() { path_.clear(); }

  private:
    fs::path path_;
};

}  // namespace

std::vector<std::string> modulesIn(const std::string& list) {
    std::vector<std::string> modules;
    for (std::size_t start = 0; start < list.size();) {
        const std::size_t end = std::min(list.find_first_of(", \t\r\n", start), list.size());
        if (end > start)
            modules.push_back(list.substr(start, end - start));
        start = end + 1;
    }
    return modules;
}

std::vector<std::string> makeRuntimeImage(const ImageRequest& request, const fs::path& output) {
    checkJmods(request.jmods);
    Unfinished unfinished(output);
    std::vector<std::string> modules = neededModules(request);
    modules.insert(modules.end(), request.modules.begin(), request.modules.end());
    std::sort(modules.begin(), modules.end());
    modules.erase(std::unique(modules.begin(), modules.end()), modules.end());
    std::string list;
    for (const std::string& module : modules)
        list += (list.empty() ? "" : ",") + module;
    CommandLine line(toolOf(request.javaHome, "jlink"));
    line.add("--add-modules").add(list).add("--strip-debug");
    line.add("--no-header-files").add("--no-man-pages").add("--output").add(output.string());
    if (!request.jmods.empty())
        line.add("--module-path").add(request.jmods.string());
    runTool("jlink", line, "");
    unfinished.keep();
    return modules;
}

}  // namespace corvane::pack
