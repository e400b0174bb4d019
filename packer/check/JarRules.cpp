// Rules for the embedded class path files.
#include "packer/check/JarRules.h"

#include <algorithm>

#include "packer/base/Errors.h"
#include "packer/base/TextFile.h"
#include "packer/check/PropertyRules.h"

namespace corvane::pack {

namespace {

// The oldest Java on which the verification class can run.
constexpr int oldestJava = 7;

void checkAccepted(const CheckedFile& jvmFile, const EmbeddedJar& jar, Findings& findings) {
    for (int java = jar.facts.java - 1; java >= oldestJava; --java) {
        if (mayAccept(jvmFile.tags, java)) {
            findings.error("java-too-old", jvmFile.place("JVM_PROPERTIES"),
                           "Java " + std::to_string(java) + " is accepted, on which " +
                               jar.facts.newestClass + " of " + jar.file->name + " does not run",
                           "it needs corvane.java.feature>=" + std::to_string(jar.facts.java));
            return;
        }
    }
}

}  // namespace

std::vector<EmbeddedJar> readJars(const CheckedProject& project, Findings& findings) {
    std::vector<EmbeddedJar> jars;
    for (const CheckedFile* const file : project.all(FileType::classpathFile)) {
        try {
            jars.push_back({file, readJar(file->name, readText(file->path))});
        } catch (const PackError& error) {
            findings.error("damaged-jar", file->inManifest, error.what(),
                           "Java can't read it either");
        }
    }
    return jars;
}

void checkJava(const CheckedProject& project, const std::vector<EmbeddedJar>& jars,
               Findings& findings) {
    const auto newest =
        std::ranges::max_element(jars, {}, [](const EmbeddedJar& jar) { return jar.facts.java; });
    if (newest == jars.end())
        return;
    for (const CheckedFile* const jvmFile : project.all(FileType::jvmFile)) {
        if (isSound(*jvmFile, findings))
            checkAccepted(*jvmFile, *newest, findings);
    }
}

void checkMainClass(const std::vector<EmbeddedJar>& jars, const std::string& mainClass,
                    const Place& place, Findings& findings) {
    std::vector<std::string> mainClasses;
    for (const EmbeddedJar& jar : jars) {
        if (jar.facts.classes.contains(mainClass))
            return;
        for (const auto& [name, bases] : jar.facts.mainClasses)
            mainClasses.push_back(name);
    }
    std::string hint = didYouMean(mainClass, mainClasses);
    if (hint.empty() && !mainClasses.empty())
        hint = "they can start " + mainClasses[0];
    findings.error("missing-main-class", place, "no embedded jar holds the main class " + mainClass,
                   hint);
}

}  // namespace corvane::pack
