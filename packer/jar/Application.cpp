// Finding out how an application is started.
#include "packer/jar/Application.h"

#include <algorithm>

#include "packer/base/Errors.h"
#include "packer/base/Findings.h"

namespace corvane::pack {

namespace {

namespace fs = std::filesystem;

// What is told of a long list.
constexpr std::size_t mostNamed = 12;

// What only `java -jar` heeds in a manifest.
constexpr const char* jarAttributes[] = {
    "Launcher-Agent-Class",     "Add-Exports",        "Add-Opens", "Enable-Native-Access",
    "JavaFX-Application-Class", "SplashScreen-Image",
};

// Those of them that an option can say as well: in front of each word and behind it.
struct OptionRow {
    const char* attribute;
    const char* before;
    const char* behind;
    int firstJava;  // that knows the option
};
constexpr OptionRow optionRows[] = {
    {"Add-Exports", "--add-exports=", "=ALL-UNNAMED", 9},
    {"Add-Opens", "--add-opens=", "=ALL-UNNAMED", 9},
    {"Enable-Native-Access", "--enable-native-access=", "", 17},
};
// Makes an earlier Java pass over options that it doesn't know.
constexpr const char* ignoreUnknown = "-XX:+IgnoreUnrecognizedVMOptions";

// And those that none can.
struct LossRow {
    const char* attribute;
    const char* loss;
};
constexpr LossRow losses[] = {
    {"Launcher-Agent-Class", "its agent is not started"},
    {"SplashScreen-Image", "its splash screen is not shown"},
};

// What is Java's own.
constexpr const char* javasPackages[] = {"java.", "javax.", "javafx.", "jdk.", "org.xml.sax."};

std::string listOf(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), mostNamed); ++i)
        text += (i == 0 ? "" : ", ") + names[i];
    if (names.size() > mostNamed)
        text += " and " + std::to_string(names.size() - mostNamed) + " more";
    return text;
}

// A name that can stand in a command line and in its template as it is.
bool isPlain(const std::string& word) {
    return !word.empty() && word.find_first_of(" \t\"%@#'\\") == std::string::npos;
}

class ApplicationReader {
  public:
    ApplicationReader(const std::vector<fs::path>& jars,
                      const std::optional<std::string>& mainClass)
        : jar_(jars.front().string()), wanted_(mainClass) {
        application_.classPath = readClassPath(jars);
    }

    Application read() {
        readTitles();
        readJars();
        application_.mainClass = chooseMainClass();
        if (!isPlain(application_.mainClass))
            throw PackError(jar_ + ": no command line can name the main class " +
                            application_.mainClass);
        application_.asJar = isStartedAsJar();
        if (!application_.asJar)
            translateManifest();
        warnOfBases();
        warnOfClassPath();
        return std::move(application_);
    }

  private:
    const JarFacts& facts() const { return application_.classPath.jars.front().facts; }
    const JarManifest& manifest() const { return facts().manifest; }
    void warn(std::string text) { application_.warnings.push_back(std::move(text)); }

    void readTitles() {
        application_.title = manifest().get("Implementation-Title");
        application_.version = manifest().get("Implementation-Version");
        application_.vendor = manifest().get("Implementation-Vendor");
    }

    void readJars() {
        for (const ClassPathJar& jar : application_.classPath.jars) {
            const JarFacts& facts = jar.facts;
            if (facts.java > application_.java) {
                application_.java = facts.java;
                application_.newestClass = facts.newestClass;
            }
            if (application_.windowSign.empty())
                application_.windowSign = facts.windowSign;
            if (!facts.faults.empty())
                warn(jar.path.string() + ": no Java can load " + listOf(facts.faults));
        }
        if (application_.windowSign.empty() && !application_.classPath.missing.empty())
            application_.windowSign = application_.classPath.missing.front() + " is not there";
    }

    bool holds(const std::string& name) const {
        return std::ranges::any_of(application_.classPath.jars, [&name](const ClassPathJar& jar) {
            return jar.facts.classes.contains(name);
        });
    }

    std::string chooseMainClass() const {
        if (wanted_) {
            if (!holds(*wanted_))
                offer("none of its jars holds the class " + *wanted_);
            return *wanted_;
        }
        for (const char* attribute : {"Main-Class", "JavaFX-Application-Class"}) {
            std::string name = manifest().get(attribute);
            std::ranges::replace(name, '/', '.');
            if (!name.empty() && !holds(name))
                offer("its manifest has the " + std::string(attribute) + " " + name +
                      ", which none of its jars holds");
            if (!name.empty())
                return name;
        }
        if (!facts().moduleMainClass.empty())
            return facts().moduleMainClass;
        if (facts().mainClasses.size() == 1)
            return facts().mainClasses.begin()->first;
        offer("its manifest has no Main-Class");
    }

    // Ends with what there is to choose from.
    [[noreturn]] void offer(const std::string& reason) const {
        std::vector<std::string> names;
        for (const auto& [name, bases] : facts().mainClasses)
            names.push_back(name);
        if (names.empty())
            throw PackError(jar_ + ": " + reason +
                            ", and no class in it has a main method; name the jar of the "
                            "application itself");
        std::string text = jar_ + ": " + reason + ". These have a main method:";
        const std::string meant = wanted_ ? didYouMean(*wanted_, names) : "";
        if (!meant.empty())
            text = jar_ + ": " + reason + "; " + meant + " These have a main method:";
        for (const std::string& name : names)
            text += "\n  corvane-pack new " + jar_ + " --main " + name;
        throw PackError(text);
    }

    bool isStartedAsJar() const {
        const bool saysMore = std::ranges::any_of(jarAttributes, [this](const char* attribute) {
            return !manifest().get(attribute).empty();
        });
        return !wanted_ && application_.classPath.jars.size() == 1 &&
               !manifest().get("Main-Class").empty() && (saysMore || facts().holdsJars);
    }

    void translateManifest() {
        bool isNew = false;
        for (const OptionRow& row : optionRows) {
            for (const std::string& word : manifest().words(row.attribute)) {
                if (!isPlain(word))
                    continue;
                application_.options.push_back(row.before + word + row.behind);
                isNew = isNew || application_.java < row.firstJava;
            }
        }
        if (isNew)
            application_.options.insert(application_.options.begin(), ignoreUnknown);
        for (const LossRow& row : losses) {
            if (!manifest().get(row.attribute).empty())
                warn(jar_ + ": " + row.loss + ", since " + row.attribute +
                     " works with java -jar alone, and this application needs a class path");
        }
    }

    // Without what it extends the main class can't be loaded.
    void warnOfBases() {
        const auto main = facts().mainClasses.find(application_.mainClass);
        if (main == facts().mainClasses.end())
            return;
        for (const std::string& base : main->second) {
            const bool isJavas = std::ranges::any_of(
                javasPackages, [&base](const char* package) { return base.starts_with(package); });
            if (!isJavas && !holds(base))
                warn(jar_ + ": the main class needs " + base +
                     ", which none of the jars holds; name that jar, too: corvane-pack new " +
                     jar_ + " OTHER.jar");
        }
    }

    void warnOfClassPath() {
        const ClassPath& classPath = application_.classPath;
        if (!classPath.missing.empty())
            warn(jar_ + ": the Class-Path names what is not there: " + listOf(classPath.missing));
        if (!classPath.folders.empty())
            warn(jar_ + ": the Class-Path names folders, which are not packed: " +
                 listOf(classPath.folders));
        const bool usesJavaFx = std::ranges::any_of(
            classPath.jars, [](const ClassPathJar& jar) { return jar.facts.usesJavaFx; });
        if (usesJavaFx && !holds("javafx.application.Application"))
            warn(jar_ +
                 ": it uses JavaFX, which is in none of its jars, nor in most Java "
                 "installations; name its jars behind this one, or bring a Java with it");
    }

    std::string jar_;
    const std::optional<std::string>& wanted_;
    Application application_;
};

}  // namespace

Application readApplication(const std::vector<fs::path>& jars,
                            const std::optional<std::string>& mainClass) {
    return ApplicationReader(jars, mainClass).read();
}

}  // namespace corvane::pack
