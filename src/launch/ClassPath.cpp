// The template function CP: the class path from options, list files, the JVM file, the template's
// own entries and the embedded archives.
#include "base/Log.h"
#include "base/RunContext.h"
#include "foundation/TextLines.h"
#include "host/Environment.h"
#include "host/Paths.h"
#include "host/TempFiles.h"
#include "launch/LaunchScript.h"
#include "launcherfile/LauncherFile.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

String quoted(const String& text) {
    return "\"" + text + "\"";
}

// In an environment variable an entry stands without its outer quotes.
String withoutOuterQuotes(String text) {
    if (!text.empty() && text.at(0) == '"')
        text.erase(0, 1);
    if (!text.empty() && text.at(text.length() - 1) == '"')
        text.erase(text.length() - 1);
    return text;
}

}  // namespace

String LaunchScript::classpath(const StringList& arguments) {
    const bool useEnvironment = jvmFile_->tag("USE_CP_ENV_VAR") == "1";
    const String path = joinClasspath(arguments, useEnvironment);
    return useEnvironment ? passInEnvironment(path) : jvmFile_->tag("CLASSPATH") + path;
}

String LaunchScript::joinClasspath(const StringList& arguments, bool useEnvironment) {
    const auto entry = [useEnvironment](const String& text) {
        return useEnvironment ? withoutOuterQuotes(text) : text;
    };
    String path;
    addClasspathOption(path, runContext().classpathPrepend);
    appendClasspath(path, launcherListFile(".cp1"));
    appendClasspath(path, jvmFile_->tag("JVM_CLASSPATH"));
    appendClasspath(path, launcherListFile(".cp"));
    for (const String& argument : arguments)
        appendClasspath(path, entry(argument));
    appendClasspath(path, entry(expandTemplate(*this, archive_, '%')));
    appendClasspath(path, embeddedArchivesClasspath(!useEnvironment));
    appendClasspath(path, launcherListFile(".cp2"));
    addClasspathOption(path, runContext().classpathAppend);
    return path;
}

void LaunchScript::appendClasspath(String& classpath, const String& part) const {
    if (part.empty())
        return;
    if (!classpath.empty())
        classpath.append(jvmFile_->tag("CLASSPATH_SEPARATOR"));
    classpath.append(part);
}

// An entry whose first character is an at sign names a list file.
void LaunchScript::addClasspathEntry(String& classpath, const String& entry) const {
    String text = entry;
    trim(text);
    if (text.empty() || text.at(0) != '@') {
        appendClasspath(classpath, text);
        return;
    }
    const String path = text.substr(1);
    const std::optional<String> list = readListFile(path);
    if (list)
        appendClasspath(classpath, *list);
    else
        logMessage("Could not find the file " + path + " while building the classpath.",
                   LogLevel::warning);
}

// The value of -cp:p or -cp:a goes in within quotes, also when there is none, so that the class
// path is never empty. A list file's name goes in as it is.
void LaunchScript::addClasspathOption(String& classpath, const String& option) const {
    const std::size_t first = option.findFirstNotOf(whitespaceChars);
    const bool namesList = first != String::npos && option.at(first) == '@';
    addClasspathEntry(classpath, namesList ? option : quoted(option));
}

std::optional<String> LaunchScript::readListFile(const String& path) const {
    const StreamGuard file(openStream(path.cstr(), "r"));
    if (!file)
        return std::nullopt;
    String joined;
    while (!atEnd(file.get())) {
        String line;
        readLine(file.get(), line);
        appendClasspath(joined, line);
    }
    return joined;
}

String LaunchScript::launcherListFile(const char* extension) const {
    return readListFile(companionFile(extension)).value_or(String());
}

// Every evaluation extracts anew, into a new temporary directory.
String LaunchScript::embeddedArchivesClasspath(bool quotedPaths) const {
    String joined;
    if (!useEmbeddedArchives_)
        return joined;
    const String directory = createTempDirectory();
    for (const FileIndexEntry& file : *runContext().launcherFile) {
        if (file.type != FileType::classpathFile)
            continue;
        const String path = file.extract(directory);
        appendClasspath(joined, quotedPaths ? quoted(path) : path);
    }
    return joined;
}

// The token itself leaves nothing in the command.
String LaunchScript::passInEnvironment(const String& classpath) const {
    const String name = jvmFile_->tag("CP_ENV_VAR");
    if (name.empty()) {
        logMessage(
            "If USE_CP_ENV_VAR is set to 1 in the jvm file, then the jvm file should also define "
            "CP_ENV_VAR.",
            LogLevel::error);
        return {};
    }
    setEnvironmentValue(name, classpath);
    logMessage("Set env var " + name + " to " + classpath + "\n");
    return {};
}

}  // namespace corvane
