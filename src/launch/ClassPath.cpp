// The class path of a launch.
#include "launch/ClassPath.h"

#include "base/Log.h"
#include "base/RunContext.h"
#include "foundation/LiteralText.h"
#include "foundation/TextLines.h"
#include "host/Environment.h"
#include "host/Paths.h"
#include "host/TempFiles.h"
#include "launch/ListFiles.h"
#include "launcherfile/LauncherFile.h"

namespace corvane {

namespace {

String quoted(const String& text) {
    return "\"" + text + "\"";
}

}  // namespace

void ClassPath::join(const StringList& arguments, const String& archive) {
    addClasspathEntry(runContext().classpathPrepend);
    appendClasspath(text_, launcherListFile(".cp1"));
    appendClasspath(text_, jvmFile_.tag("JVM_CLASSPATH"));
    appendClasspath(text_, launcherListFile(".cp"));
    for (const String& argument : arguments)
        appendClasspath(text_, entry(argument));
    appendClasspath(text_, entry(archive));
    appendClasspath(text_, embeddedArchivesClasspath());
    appendClasspath(text_, launcherListFile(".cp2"));
    addClasspathEntry(runContext().classpathAppend);
    // Two lists that give nothing have left out the quotes of both options, as a clean path has.
    if (text_.empty())
        text_ = quoted("");
}

void ClassPath::appendClasspath(String& classpath, const String& part) const {
    if (part.empty())
        return;
    if (!classpath.empty())
        classpath.append(jvmFile_.tag("CLASSPATH_SEPARATOR"));
    classpath.append(part);
}

// The value of -cp:p or -cp:a goes in within quotes, also when there is none. One whose first
// character is an at sign names a list file.
void ClassPath::addClasspathEntry(const String& option) {
    String text = option;
    trim(text);
    if (text.empty() || text.at(0) != '@') {
        if (!text.empty() || !settings_.cleanClassPath)
            appendClasspath(text_, quoted(option));
        return;
    }
    const String path = text.substr(1);
    const std::optional<String> list = readListFile(path);
    if (list)
        appendClasspath(text_, *list);
    else
        logMessage("Could not find the file " + path + " while building the classpath.",
                   LogLevel::warning);
}

String ClassPath::entry(const String& argument) const {
    String text = argument;
    if (!inEnvironment_)
        return text;
    if (!text.empty() && text.at(0) == '"')
        text.erase(0, 1);
    if (!text.empty() && text.at(text.length() - 1) == '"')
        text.erase(text.length() - 1);
    return text;
}

// Nothing if the file can't be opened.
std::optional<String> ClassPath::readListFile(const String& path) const {
    String joined;
    const bool opened =
        forEachLine(path, [&](const String& line) { appendClasspath(joined, line); });
    return opened ? std::optional(joined) : std::nullopt;
}

String ClassPath::launcherListFile(const char* extension) const {
    return readListFile(companionFile(extension)).value_or(String());
}

String ClassPath::embeddedArchivesClasspath() const {
    String joined;
    if (!settings_.useEmbeddedArchives)
        return joined;
    const String directory = createTempDirectory();
    for (const FileIndexEntry& file : *runContext().launcherFile) {
        if (file.type != FileType::classpathFile)
            continue;
        const String path = literal(file.extract(directory));
        appendClasspath(joined, inEnvironment_ ? path : quoted(path));
    }
    return joined;
}

void ClassPath::passInEnvironment() const {
    const String name = jvmFile_.tag("CP_ENV_VAR");
    if (name.empty()) {
        logMessage(
            "If USE_CP_ENV_VAR is set to 1 in the jvm file, then the jvm file should also define "
            "CP_ENV_VAR.",
            LogLevel::error);
        return;
    }
    const String value = withoutMarks(text_);
    setEnvironmentValue(name, value);
    logMessage("Set env var " + name + " to " + value + "\n");
}

}  // namespace corvane
