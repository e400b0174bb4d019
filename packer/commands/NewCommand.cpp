// `corvane-pack new`.
#include <iostream>

#include "packer/base/Errors.h"
#include "packer/base/Paths.h"
#include "packer/base/Progress.h"
#include "packer/commands/Command.h"
#include "packer/project/NewProject.h"

namespace corvane::pack {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostJars = 10000;

struct Options {
    std::optional<std::string> mainClass;
    std::optional<std::string> folder;
    std::optional<std::string> name;
    bool tool;
    bool window;
    std::optional<ImageRequest> runtime;
    std::vector<fs::path> jars;
};

// The Java to bring along, if one is wanted.
std::optional<ImageRequest> takeRuntime(Arguments& arguments) {
    const bool wanted = arguments.takeFlag("--with-jvm");
    const std::optional<std::string> jdk = arguments.takeValue("--jdk");
    const std::optional<std::string> jmods = arguments.takeValue("--jmods");
    const std::optional<std::string> modules = arguments.takeValue("--modules");
    if (!wanted && (jdk || jmods || modules))
        throw UsageError("--jdk, --jmods and --modules say more of --with-jvm");
    if (!wanted)
        return std::nullopt;
    return ImageRequest{
        {}, pathOf(jdk.value_or("")), pathOf(jmods.value_or("")), modulesIn(modules.value_or(""))};
}

Options takeOptions(Arguments& arguments) {
    Options options{arguments.takeValue("--main"),
                    arguments.takeValue("-o"),
                    arguments.takeValue("--name"),
                    arguments.takeFlag("--tool"),
                    arguments.takeFlag("--window"),
                    takeRuntime(arguments),
                    {}};
    for (const std::string& jar : arguments.takeRest(1, mostJars, "a jar"))
        options.jars.push_back(pathOf(jar));
    if (options.tool && options.window)
        throw UsageError("--tool and --window exclude each other");
    const std::string name = options.name.value_or("-");
    if (name.empty() || name.find_first_of("/\\:*?\"<>|") != std::string::npos)
        throw UsageError("--name is no name for a file: " + name);
    return options;
}

// Taken for a tool only where that is sure; whoever knows better says so.
NewProject projectOf(const Options& options, const Application& application) {
    NewProject project;
    project.name = options.name.value_or(options.jars.front().stem().string());
    project.title = options.name || application.title.empty() ? project.name : application.title;
    project.folder = pathOf(options.folder.value_or(project.name));
    project.tool = options.tool || (!options.window && application.windowSign.empty());
    project.runtime = options.runtime;
    return project;
}

std::string quotedIfNeeded(const std::string& word) {
    return word.find(' ') == std::string::npos ? word : '"' + word + '"';
}

std::string jarsOf(const Application& application, bool copied) {
    std::uint64_t size = 0;
    const std::vector<ClassPathJar>& jars = application.classPath.jars;
    for (const ClassPathJar& jar : jars)
        size += fs::file_size(jar.path);
    const bool single = jars.size() == 1;
    return (single ? "a jar" : std::to_string(jars.size()) + " jars") + " of " + sizeText(size) +
           (copied ? (single ? ", copied into the project"
                             : ", those from elsewhere copied into the project")
                   : ", taken from where " + std::string(single ? "it lies" : "they lie"));
}

// Of the Java that comes along.
void tellRuntime(const WrittenProject& written) {
    const RuntimeImage& runtime = written.runtime;
    const bool foreign = runtime.system != System::windows;
    std::cout << "\n  Java " << runtime.version << " comes along: " << written.modules.size()
              << (written.modules.size() == 1 ? " module, " : " modules, ")
              << sizeText(runtime.size) << " unpacked, for " << systemName(runtime.system)
              << (foreign ? "; one for Windows needs --jmods of a JDK for Windows" : "");
}

// What was chosen, and how to choose otherwise.
void tell(const NewProject& project, const Application& application,
          const WrittenProject& written) {
    std::cout << project.folder.string() << ": ";
    for (const std::string* text :
         {&application.title, &application.version, &application.vendor}) {
        if (!text->empty())
            std::cout << *text << ", ";
    }
    std::cout << "main class " << application.mainClass << ", "
              << jarsOf(application, written.copied) << "\n  Java: " << written.jvmWord;
    if (written.jvmWord != jvmWordFor(0))
        std::cout << ", since " << application.newestClass << " needs Java " << application.java;
    if (!project.tool)
        std::cout << "\n  it may show windows (" << application.windowSign
                  << "); --tool makes a command-line tool of it";
    else
        std::cout << "\n  a command-line tool"
                  << (application.windowSign.empty() ? ", since nothing in it draws a window" : "")
                  << "; --window makes an application with windows of it";
    const bool forHost = !written.modules.empty() && written.runtime.system == System::host;
    if (!written.modules.empty())
        tellRuntime(written);
    std::cout << "\nnext: corvane-pack build " << quotedIfNeeded(project.folder.string())
              << (forHost ? " --for host" : "") << '\n';
}

int run(Arguments& arguments) {
    const Options options = takeOptions(arguments);
    const Application application = readApplication(options.jars, options.mainClass);
    const NewProject project = projectOf(options, application);
    if (project.runtime)
        std::cerr << "jlink makes a Java for it; that takes some seconds\n";
    const WrittenProject written = writeProject(project, application);
    for (const std::string& warning : application.warnings)
        std::cerr << "warning: " << warning << '\n';
    tell(project, application, written);
    return success;
}

}  // namespace

const Command newCommand = {
    "new",
    "APP.jar [OTHER.jar ...] [-o FOLDER] [--main CLASS] [--tool|--window] [--name NAME]\n"
    "       [--with-jvm [--jdk DIR] [--jmods DIR] [--modules LIST]]",
    "makes a project of a jar",
    "Reads the jar and writes a project that corvane-pack build makes a launcher of, as it\n"
    "stands.\n"
    "\n"
    "  OTHER.jar   is put on the class path, too; the jars that the manifest of APP.jar names as\n"
    "              its Class-Path need not be named\n"
    "  -o FOLDER   is made, or empty; by default it is called as the project is\n"
    "  --main      the main class, where the jar names none or another\n"
    "  --tool      a command-line tool: no window of the launcher's own, the terminal is the\n"
    "              application's. By default this is chosen only where nothing in the jars could\n"
    "              draw a window\n"
    "  --window    an application with windows\n"
    "  --name      of the launcher; by default it is called as the jar, and its windows as the "
    "jar\n"
    "              says\n"
    "  --with-jvm  the launcher brings a Java along, for where none is found: jlink makes it of\n"
    "              the modules that jdeps sees the jars need\n"
    "  --jdk       the JDK whose tools do it; by default JAVA_HOME, else the one in PATH\n"
    "  --jmods     the folder of that name of a JDK for the launcher's system, if that is "
    "another:\n"
    "              unpacked anywhere, and of the same version\n"
    "  --modules   the modules, with commas between them, in the place of what jdeps sees\n",
    run};

}  // namespace corvane::pack
