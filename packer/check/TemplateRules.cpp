// Rules for launch scripts: what shows when the launcher's own code expands the templates, and what
// a JVM could not make of the finished command line.
#include "packer/check/TemplateRules.h"

#include <algorithm>
#include <optional>
#include <set>

#include "jvmsearch/EnvHint.h"
#include "packer/check/CommandLine.h"
#include "packer/check/KnownTags.h"
#include "packer/check/TemplateRun.h"

namespace corvane::pack {

namespace {

constexpr const char* commandTag = "COMMAND";
constexpr const char* archiveTag = "ARCHIVE";

constexpr const char* commandShape =
    R"(it is written COMMAND: """@JVM_HOME@\@JVM_EXE@"" %CP%() Main")";

std::string standard(const String& text) {
    return std::string(text.view());
}

// A function called in one of the templates.
struct Call : TemplateCall {
    const char* tag;
};

// A launch script, the JVM files that it serves, and where findings go.
struct Script {
    const CheckedProject& project;
    const CheckedFile& file;
    const std::vector<EmbeddedJar>& jars;
    LaunchSettings settings;
    std::vector<const CheckedFile*> jvmFiles;
    std::vector<Call> calls;  // of both templates, on any JVM file
    Findings& findings;

    // What is expanded of a tag: of the command that is the text behind the home.
    const String& text(const char* tag) const {
        return tag == commandTag ? settings.command : settings.archive;
    }
    Place place(const char* tag, std::size_t offset = 0) const {
        const std::size_t whole = file.tags.value(tag, 0).length();
        return file.place(tag, 0, whole - text(tag).length() + offset);
    }
    bool calledFunction(const char* name) const {
        return std::any_of(calls.begin(), calls.end(),
                           [&](const Call& call) { return call.function == name; });
    }
};

void checkBeginning(const Script& script) {
    const String command = script.file.tags.value(commandTag, 0);
    if (!beginsWithHome(command))
        script.findings.error("command-beginning", script.file.place(commandTag),
                              "COMMAND does not begin with \"@JVM_HOME@", commandShape);
    else if (command.at(0) != '"')
        script.findings.error("command-beginning", script.file.place(commandTag),
                              std::string("COMMAND opens with ") + command.at(0) +
                                  " where a double quote has to stand",
                              commandShape);
}

// Whether the template can be expanded for every JVM file. A mistake is told once.
bool runForAll(Script& script, const char* tag, const String& text, const LaunchSettings& settings,
               std::vector<TemplateRun>& runs) {
    const TagFile noTags;
    for (std::size_t i = 0; i == 0 || i < script.jvmFiles.size(); ++i) {
        const CheckedFile* const jvm = script.jvmFiles.empty() ? nullptr : script.jvmFiles[i];
        TemplateRun run = runTemplate(text, settings, jvm ? jvm->tags : noTags);
        if (run.mistake) {
            const auto& [rule, offset, words, hint] = *run.mistake;
            const bool ofTags = hint.empty() && jvm;
            script.findings.error(rule, script.place(tag, offset), words,
                                  ofTags ? "with the tags of " + jvm->name : hint);
            return false;
        }
        for (const TemplateCall& call : run.calls)
            script.calls.push_back({call, tag});
        runs.push_back(std::move(run));
    }
    return true;
}

// Expands the archive by itself, so that its mistakes are not looked for in the command, and then
// the command.
bool expand(Script& script, std::vector<TemplateRun>& runs) {
    LaunchSettings archive = script.settings;
    archive.command = String();
    std::vector<TemplateRun> archiveRuns;
    return runForAll(script, archiveTag, archive.archive, archive, archiveRuns) &&
           runForAll(script, commandTag, script.settings.command, script.settings, runs);
}

// A tag that no JVM file has is the empty text. Those that the launcher knows may be left out.
void checkTags(const Script& script) {
    std::set<std::string> answered;
    for (const KnownTag& tag : knownTags(FileType::jvmFile))
        answered.insert(tag.name);
    for (const CheckedFile* const jvm : script.jvmFiles) {
        for (const TagRecord& record : jvm->tags.records())
            answered.insert(standard(record.name));
    }
    std::set<std::string> told;
    const auto check = [&](const std::string& name, const Place& place) {
        const std::vector<std::string> names(answered.begin(), answered.end());
        if (told.insert(name).second && !answered.contains(name))
            script.findings.error("unanswered-tag", place, "no JVM file has the tag " + name,
                                  didYouMean(name, names));
    };
    for (const Call& call : script.calls) {
        if (call.function == "IF_EXISTS")
            check(call.arguments[0], script.place(call.tag, call.offset));
    }
    for (const char* const tag : {commandTag, archiveTag}) {
        for (const TemplateToken& token : tokensOf(script.text(tag), '@'))
            check(token.name, script.place(tag, token.offset));
    }
}

// Two number signs with anything but a name between them were hardly meant as a variable.
void checkVariables(const Script& script) {
    for (const char* const tag : {commandTag, archiveTag}) {
        for (const TemplateToken& token : tokensOf(script.text(tag), '#')) {
            if (token.name.find_first_of(" \"\\/%@;") != std::string::npos)
                script.findings.error("odd-variable", script.place(tag, token.offset),
                                      "\"" + token.name +
                                          "\" between two # is taken for the name of "
                                          "an environment variable",
                                      "a # alone stands for itself");
        }
    }
}

// Embedded files that the template leaves aside, and the other way round.
void checkUse(const Script& script) {
    const CheckedFile* const archive = script.project.first(FileType::applicationArchive);
    for (const Call& call : script.calls) {
        if (call.function == "APPLICATION_ARCHIVE" && call.arguments.empty() && !archive) {
            script.findings.error("no-application-archive", script.place(call.tag, call.offset),
                                  "the launcher holds no application archive",
                                  "name one in the manifest: APPLICATION_ARCHIVE: app.jar");
            break;
        }
    }
    if (archive && !script.calledFunction("APPLICATION_ARCHIVE"))
        script.findings.warning("unused-archive", script.place(commandTag),
                                "the application archive " + archive->name + " is never used",
                                "%APPLICATION_ARCHIVE%() gives its path");
    const CheckedFile* const jar = script.project.first(FileType::classpathFile);
    if (jar && !script.calledFunction("CP"))
        script.findings.warning("no-class-path", script.place(commandTag),
                                jar->name + " is never in the class path",
                                "the command needs %CP%() in front of the main class");
}

std::vector<std::string> entriesOf(const TemplateRun& run, const CheckedFile& jvm) {
    const std::string separator = standard(jvm.tags.value("CLASSPATH_SEPARATOR", 0));
    std::vector<std::string> entries;
    for (std::size_t start = 0; start <= run.classPath.size() && !separator.empty();) {
        const std::size_t end =
            std::min(run.classPath.find(separator, start), run.classPath.size());
        std::string entry = run.classPath.substr(start, end - start);
        std::erase(entry, '"');
        if (!entry.empty())
            entries.push_back(entry);
        start = end + separator.size();
    }
    return entries;
}

// The place of an entry that a template names as it is.
std::optional<Place> placeOfEntry(const Script& script, const std::string& entry) {
    for (const char* const tag : {commandTag, archiveTag}) {
        if (const std::size_t at = script.text(tag).find(entry.c_str()); at != String::npos)
            return script.place(tag, at);
    }
    return std::nullopt;
}

// What the launch script needs of a JVM file, and the other way round.
void checkNeeds(const Script& script, const CheckedFile& jvm) {
    const bool setsProperties =
        script.calledFunction("SYSTEMPROP") || script.calledFunction("RUNTIME_SYSTEMPROP");
    if (setsProperties && jvm.tags.value("SYSTEM", 0).empty())
        script.findings.error("property-syntax", jvm.place("SYSTEM"),
                              "there is no SYSTEM, which the launch script needs to set properties",
                              R"(SYSTEM: " -D")");
    const bool usesArguments = script.calledFunction("RUNTIME_JAVAARGS") ||
                               script.text(commandTag).find("REQ_JAVA_ARGS") != String::npos;
    if (!usesArguments && !jvm.tags.value("REQ_JAVA_ARGS", 0).empty())
        script.findings.error("unused-java-args", jvm.place("REQ_JAVA_ARGS"),
                              "the launch script passes no REQ_JAVA_ARGS on",
                              "COMMAND needs %RUNTIME_JAVAARGS%() in front of the main class");
}

// A relative entry is looked for in the working directory and not in the payload.
void checkEntry(const Script& script, const std::string& entry, const Place& place) {
    const std::string name = entry.substr(entry.find_last_of("\\/") + 1);
    const auto& files = script.project.files;
    const bool embedded = std::any_of(files.begin(), files.end(), [&](const CheckedFile& file) {
        return file.type == FileType::classpathFile && file.name == name;
    });
    if (embedded)
        script.findings.warning("class-path-entry", place,
                                entry + " names a file in the working directory; the embedded " +
                                    name + " is in the class path by itself",
                                "leave it out: %CP%()");
    else
        script.findings.warning(
            "class-path-entry", place,
            "the launcher does not hold " + entry +
                ", which is looked for in the working directory",
            "name it as a CLASSPATH_FILE in the manifest, or, if it lies beside "
            "the launcher, write %LAUNCHER_DIR%()\\" +
                name);
}

// What Java starts: a jar, with the class path of that jar alone, or a class, which must be in the
// embedded jars if these are `all` of the class path.
void checkStart(const Script& script, const JavaCommand& command, bool all) {
    const CheckedFile* const file = script.project.first(FileType::classpathFile);
    if (!command.jar.empty() && file != nullptr)
        script.findings.error("jar-and-class-path", script.place(commandTag),
                              "Java does not look at " + file->name +
                                  " in the class path when it starts a jar (-jar)",
                              "name the main class in the place of -jar");
    const bool known = all && script.calledFunction("CP") && !script.jars.empty() &&
                       script.jars.size() == script.project.all(FileType::classpathFile).size();
    if (command.mainClass.empty() || !known)
        return;
    const std::size_t at = script.text(commandTag).rfind(command.mainClass.c_str());
    checkMainClass(script.jars, command.mainClass,
                   script.place(commandTag, at == String::npos ? 0 : at), script.findings);
}

void checkEntries(const Script& script, const std::vector<std::string>& entries,
                  std::set<std::string>& told) {
    for (const std::string& entry : entries) {
        const std::optional<Place> place = placeOfEntry(script, entry);
        const bool isElsewhere =
            entry.find_first_of("%@#") != std::string::npos || isAbsolute(entry.c_str());
        if (place && !isElsewhere && told.insert(entry).second)
            checkEntry(script, entry, *place);
    }
}

void checkRuns(const Script& script, const std::vector<TemplateRun>& runs) {
    std::set<std::string> told;
    for (std::size_t i = 0; i < script.jvmFiles.size(); ++i) {
        const CheckedFile& jvm = *script.jvmFiles[i];
        if (!isSound(script.file, script.findings) || !isSound(jvm, script.findings))
            continue;
        checkCommandLine(runs[i].commandLine, checkedJavaHome,
                         standard(jvm.tags.value("JVM_EXE", 0)), script.place(commandTag),
                         script.findings);
        const std::vector<std::string> entries = entriesOf(runs[i], jvm);
        checkEntries(script, entries, told);
        if (isSound(script.file, script.findings))
            checkStart(script, readJavaCommand(runs[i].commandLine), entries.empty());
    }
}

}  // namespace

void checkLaunchScript(const CheckedProject& project, const std::vector<EmbeddedJar>& jars,
                       Findings& findings) {
    const CheckedFile* const file = project.first(FileType::launchScript);
    if (file == nullptr)
        return;
    Script script{
        project, *file,   jars, readLaunchSettings(file->tags), project.all(FileType::jvmFile),
        {},      findings};
    if (!script.settings.hasCommand) {
        findings.error("no-command", file->place(commandTag), "the launch script has no COMMAND",
                       commandShape);
        return;
    }
    checkBeginning(script);
    std::vector<TemplateRun> runs;
    if (!expand(script, runs))
        return;
    checkTags(script);
    checkVariables(script);
    checkUse(script);
    for (const CheckedFile* const jvm : script.jvmFiles)
        checkNeeds(script, *jvm);
    checkRuns(script, runs);
}

}  // namespace corvane::pack
