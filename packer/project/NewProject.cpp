// Writing a project.
#include "packer/project/NewProject.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <set>

#include "packer/base/Errors.h"
#include "packer/base/Paths.h"
#include "packer/base/WholeFile.h"
#include "packer/face/Face.h"
#include "packer/project/Shipped.h"

namespace corvane::pack {

namespace {

namespace fs = std::filesystem;

constexpr const char* jarFolder = "jars";
constexpr const char* runtimeFolder = "runtime";

// A jar of the project.
struct JarPlace {
    fs::path source;
    std::string place;  // as the manifest names it
    std::string name;   // in the launcher
    bool isCopied = false;
};

// "//" is a tag that nobody reads.
std::string note(const std::string& text) {
    return "//: " + text + '\n';
}

// Puts the line feed and what the format needs around a value.
std::string tag(const std::string& name, const std::string& value) {
    if (!value.starts_with('"'))
        return name + ": " + value + '\n';
    std::string quoted;
    for (const char character : value)
        quoted += character == '"' ? std::string(2, '"') : std::string(1, character);
    return name + ": \"" + quoted + "\"\n";
}

std::string lower(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return text;
}

// `name`, or one like it that is free: two files of a launcher never have the same.
std::string freeName(const fs::path& name, std::set<std::string>& taken) {
    std::string text = name.string();
    for (int i = 2; !taken.insert(lower(text)).second; ++i)
        text = name.stem().string() + '-' + std::to_string(i) + name.extension().string();
    return text;
}

// A jar is named where it lies, so that the next build takes a new one up. What has no folder in
// common with the project belongs to the system or to somebody else; it is copied.
bool isNear(const fs::path& one, const fs::path& other) {
    const fs::path oneRest = one.relative_path();
    const fs::path otherRest = other.relative_path();
    return one.root_path() == other.root_path() && *oneRest.begin() == *otherRest.begin();
}

std::vector<JarPlace> placesOf(const ClassPath& classPath, const fs::path& folder) {
    std::set<std::string> taken = {lower(shippedVerifyClass().name)};
    const fs::path target = fs::weakly_canonical(fs::absolute(folder));
    std::vector<JarPlace> places;
    for (const ClassPathJar& jar : classPath.jars) {
        const fs::path name = jar.path.filename();
        JarPlace place{fs::canonical(fs::absolute(jar.path).parent_path()) / name, {}, {}, false};
        place.name = freeName(name, taken);
        place.isCopied = !isNear(place.source, target);
        place.place = place.isCopied ? std::string(jarFolder) + '/' + place.name
                                     : place.source.lexically_relative(target).generic_string();
        places.push_back(std::move(place));
    }
    return places;
}

std::string entryOf(const JarPlace& place) {
    const bool isNamed = pathOf(place.place).filename().string() == place.name;
    return place.place + (isNamed ? "" : " | name=" + place.name);
}

std::string jarTag(const Application& application, const std::vector<JarPlace>& places) {
    if (application.asJar)
        return tag("APPLICATION_ARCHIVE", entryOf(places.front()));
    if (places.size() == 1)
        return tag("CLASSPATH_FILE", entryOf(places.front()));
    std::string text = "CLASSPATH_FILE:\n";
    for (const JarPlace& place : places)
        text += "  " + entryOf(place) + '\n';
    return text + "/:\n";
}

// A value that can't be shown is left out, such as a version without a number.
std::string faceTag(const std::string& key, const std::string& value) {
    try {
        Face face;
        setFace(face, key, value, {});
        return tag(key, value);
    } catch (const PackError&) {
        return "";
    }
}

std::string faceTags(const NewProject& project, const Application& application) {
    return faceTag("PRODUCT", project.title) +
           (project.tool ? "" : faceTag("TITLE", project.title)) +
           faceTag("VERSION", application.version) + faceTag("COMPANY", application.vendor);
}

std::string manifest(const NewProject& project, const Application& application,
                     const std::vector<JarPlace>& places) {
    const std::string word = jvmWordFor(application.java);
    std::string text = note("What goes into the launcher. Make it with: corvane-pack build");
    text += note("Such a line is a note. A word in angle brackets stands for a file that ships");
    text += note("with corvane-pack; corvane-pack eject writes these out, to be changed.");
    text += tag("KIND", project.tool ? "tool" : "0");
    text += note("in which order things happen: find a Java, then start the application");
    text += tag("INSTRUCTIONS", project.tool ? "<tool>" : "<standard>");
    text += note("the Java that it needs, and where that is looked for");
    text += tag("JVM", word);
    text += note("the command line");
    text += tag("LAUNCHSCRIPT", project.name + ".launch");
    text += note(places.size() == 1 ? "the application" : "the class path, in its order");
    text += jarTag(application, places);
    if (project.runtime) {
        text += note("the Java that is unpacked where none is found; KEEP_JVM: PLACE keeps it");
        text += tag("JVM_IMAGE", runtimeFolder);
    }
    text += note("what a user reads who has no such Java");
    text += tag("JVMMESSAGE", "<standard>");
    text += note("what Windows shows of the program; ICON: FILE gives it an icon");
    return text + faceTags(project, application);
}

// Removes what it was told of unless all went well.
class Cleanup {
  public:
    ~Cleanup() {
        std::error_code ignored;
        for (auto path = paths_.rbegin(); path != paths_.rend(); ++path)
            fs::remove(*path, ignored);
    }
    void note(fs::path path) { paths_.push_back(std::move(path)); }
    void keep() { paths_.clear(); }

  private:
    std::vector<fs::path> paths_;
};

void makeFolder(const fs::path& folder, Cleanup& cleanup) {
    if (folder.empty() || fs::exists(folder))
        return;
    makeFolder(folder.parent_path(), cleanup);
    fs::create_directory(folder);
    cleanup.note(folder);
}

void copyJars(const std::vector<JarPlace>& places, const fs::path& folder, Cleanup& cleanup) {
    for (const JarPlace& place : places) {
        if (!place.isCopied)
            continue;
        makeFolder(folder / jarFolder, cleanup);
        const fs::path copy = folder / pathOf(place.place);
        cleanup.note(copy);
        fs::copy_file(place.source, copy);
    }
}

// A Java for the application, in `folder`. Leaves nothing there when it fails.
void makeRuntime(ImageRequest request, const Application& application, const fs::path& folder,
                 WrittenProject& written) {
    if (request.modules.empty())
        for (const ClassPathJar& jar : application.classPath.jars)
            request.jars.push_back(fs::absolute(jar.path));
    written.modules = makeRuntimeImage(request, folder);
    written.runtime = readRuntimeImage(folder);
    const std::string& version = written.runtime.version;
    int java = 0;
    std::from_chars(version.data(), version.data() + version.size(), java);
    if (java >= application.java)
        return;
    fs::remove_all(folder);
    throw PackError("the JDK is of Java " + version + ", but " + application.newestClass +
                    " needs Java " + std::to_string(application.java) +
                    "; name a newer JDK with --jdk");
}

void checkFolder(const fs::path& folder) {
    if (fs::exists(folder) && !fs::is_directory(folder))
        throw PackError(folder.string() + ": this is a file; name a folder with -o");
    if (fs::exists(folder) && !fs::is_empty(folder))
        throw PackError(folder.string() +
                        ": this folder is not empty; name another one with -o, or remove it");
}

}  // namespace

std::string jvmWordFor(int java) {
    int chosen = 0;
    for (const std::string& word : shippedWords(FileType::jvmFile)) {
        int number = 0;
        std::from_chars(word.data() + 1, word.data() + word.size(), number);
        const bool fits = number >= java;
        const bool chosenFits = chosen >= java;
        if (word.ends_with("+>") && (chosen == 0 || (fits ? !chosenFits || number < chosen
                                                          : !chosenFits && number > chosen)))
            chosen = number;
    }
    return '<' + std::to_string(chosen) + "+>";
}

std::string launchScript(const NewProject& project, const Application& application) {
    std::string command = R"("@JVM_HOME@\@JVM_EXE@" %RUNTIME_JAVAARGS%())";
    for (const std::string& option : application.options)
        command += ' ' + option;
    command += application.asJar ? R"x( %RUNTIME_SYSTEMPROP%() -jar "%APPLICATION_ARCHIVE%()")x"
                                 : " %CP%() %RUNTIME_SYSTEMPROP%() " + application.mainClass;
    std::string text =
        note("How the application is started. The Java that was found fills in @JVM_HOME@");
    text += note("and @JVM_EXE@, " +
                 std::string(application.asJar ? "%APPLICATION_ARCHIVE%() is the jar"
                                               : "%CP%() is the class path") +
                 "; the user's arguments follow. What Java");
    text += note("needs besides, such as -Xmx512m, stands behind %RUNTIME_JAVAARGS%().");
    text += tag("DESC", project.name);
    text += tag("COMMAND", command);
    text +=
        note("no empty entry in the class path; arguments as they were typed; long ones in a file");
    text += tag("CLEAN_CP", "1") + tag("EXACT_ARGS", "1") + tag("ARG_FILE", "1");
    if (!project.tool)
        return text;
    text += note("it works in the folder of its caller, and on the caller's terminal");
    return text + tag("AUTO_SET_WORKING_DIR", "0") + tag("DISPLAY_CONSOLE", "1");
}

WrittenProject writeProject(const NewProject& project, const Application& application) {
    checkFolder(project.folder);
    const std::vector<JarPlace> places = placesOf(application.classPath, project.folder);
    WrittenProject written{
        jvmWordFor(application.java), std::ranges::any_of(places, &JarPlace::isCopied), {}, {}};
    Cleanup cleanup;
    try {
        makeFolder(project.folder, cleanup);
        copyJars(places, project.folder, cleanup);
        const fs::path base = project.folder / pathOf(project.name);
        cleanup.note(base.string() + ".launch");
        writeWhole(base.string() + ".launch", launchScript(project, application));
        const fs::path manifestPath = base.string() + ".manifest";
        cleanup.note(manifestPath);
        writeWhole(manifestPath, manifest(project, application, places));
        if (project.runtime)
            makeRuntime(*project.runtime, application, project.folder / runtimeFolder, written);
    } catch (const fs::filesystem_error& failure) {
        throw PackError(failure.what());
    }
    cleanup.keep();
    return written;
}

}  // namespace corvane::pack
