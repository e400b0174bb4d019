// The functions of the command template, but for the class path.
#include "launch/TemplateFunctions.h"

#include <cerrno>
#include <limits>

#include "base/RunContext.h"
#include "foundation/TextLines.h"
#include "host/Paths.h"
#include "host/TempFiles.h"
#include "launcherfile/Extraction.h"
#include "launcherfile/LauncherFile.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

constexpr std::int32_t anyNumber = std::numeric_limits<std::int32_t>::max();

void appendWord(String& line, const String& word) {
    if (word.empty())
        return;
    if (!line.empty())
        line.append(' ');
    line.append(word);
}

// Calls `take` for each line of a companion file of the launcher; none if it can't be opened.
template <class Take>
void forEachCompanionLine(const char* extension, Take take) {
    const StreamGuard file(openStream(companionFile(extension).cstr(), "r"));
    while (file && !atEnd(file.get())) {
        String line;
        readLine(file.get(), line);
        take(line);
    }
}

// Copies a whole file. Gives the error number of the last failed write, 0 if all went well.
int copyStream(std::FILE* source, std::FILE* destination) {
    char block[4096];
    int error = 0;
    while (const std::size_t size = std::fread(block, 1, sizeof block, source)) {
        if (std::fwrite(block, 1, size, destination) != size)
            error = errno;
    }
    if (std::fflush(destination) != 0)
        error = errno;
    return error;
}

// Copies the archive that lies beside the launcher to a temporary directory and gives its path
// there; empty if there is none.
String copyArchive(const String& name) {
    String source = launcherDirectory();
    ensureTrailingSeparator(source);
    source.append(name);
    String destination = createTempDirectory();
    ensureTrailingSeparator(destination);
    destination.append(lastPathComponent(name));
    const StreamGuard input(openStream(source.cstr(), "rb"));
    const StreamGuard output(openStream(destination.cstr(), "wb"));
    if (!input || !output)
        return {};
    runContext().applicationArchive = destination;
    const int error = copyStream(input.get(), output.get());
    if (error != 0)
        throwWriteFailure(error);
    return destination;
}

// Extracts all embedded application archives; the last one counts.
String extractArchives() {
    const String directory = createTempDirectory();
    String path;
    for (const FileIndexEntry& file : *runContext().launcherFile) {
        if (file.type == FileType::applicationArchive)
            path = file.extract(directory);
    }
    return path;
}

}  // namespace

const LaunchScript::Function LaunchScript::functions[] = {
    {"REPLACE", 3, 3, "REPLACE function requires 3 arguments.", &LaunchScript::replace},
    {"RUNTIME_SYSTEMPROP", 0, 0, "RUNTIME_SYSTEMPROP function takes no arguments.",
     &LaunchScript::runtimeSystemProperties},
    {"RUNTIME_JAVAARGS", 0, 0, "RUNTIME_JAVAARGS function takes no arguments.",
     &LaunchScript::runtimeJavaArgs},
    {"SYSTEMPROP", 2, 2, "SYSTEMPROP function requires 2 arguments.",
     &LaunchScript::systemProperty},
    {"CP", 0, anyNumber, "", &LaunchScript::classpath},
    {"IF_EXISTS", 2, 2, "IF_EXISTS function requires 2 arguments.", &LaunchScript::ifExists},
    {"LAUNCHER_FILE", 0, 0, "LAUNCHER_FILE function takes 0 arguments.",
     &LaunchScript::launcherFile},
    {"LAUNCHER_DIR", 0, 0, "LAUNCHER_DIR function takes 0 arguments.", &LaunchScript::launcherDir},
    {"APPLICATION_ARCHIVE", 0, 1, "APPLICATION_ARCHIVE function takes 0 arguments.",
     &LaunchScript::applicationArchive},
    {"TEMP_DIR", 0, 0, "TEMP_DIR function takes 0 arguments.", &LaunchScript::tempDir},
    {nullptr, 0, 0, nullptr, nullptr},
};

// The subject's own tokens aren't expanded yet, so the values that they take on aren't touched.
String LaunchScript::replace(const StringList& arguments) {
    const String search = jvmFile_->expandTokens(arguments.at(0));
    const String replacement = jvmFile_->expandTokens(arguments.at(1));
    String subject = arguments.at(2);
    // An empty search text would be found everywhere and for ever: it replaces nothing.
    if (search.empty())
        return subject;
    for (std::size_t at = subject.find(search); at != String::npos;
         at = subject.find(search, at + replacement.length()))
        subject.replace(at, search.length(), replacement);
    return subject;
}

String LaunchScript::runtimeSystemProperties(const StringList&) {
    String out;
    forEachCompanionLine(".sp", [&](const String& line) {
        const std::size_t equals = line.find('=');
        if (equals != String::npos)
            appendWord(out, systemPropertyText(line.substr(0, equals), line.substr(equals + 1)));
    });
    return out;
}

String LaunchScript::runtimeJavaArgs(const StringList&) {
    String out;
    forEachCompanionLine(
        ".ja", [&](const String& line) { appendWord(out, jvmFile_->expandTokens(line)); });
    const String required = jvmFile_->tag("REQ_JAVA_ARGS");
    return required.empty() ? out : out + " " + required;
}

String LaunchScript::systemProperty(const StringList& arguments) {
    return systemPropertyText(arguments.at(0), arguments.at(1));
}

String LaunchScript::systemPropertyText(const String& name, const String& value) {
    return jvmFile_->tag("SYSTEM") + name + jvmFile_->tag("SYSTEM_SEPARATOR") +
           jvmFile_->expandTokens(value);
}

String LaunchScript::ifExists(const StringList& arguments) {
    if (jvmFile_->tag(arguments.at(0).cstr()).empty())
        return {};
    return jvmFile_->expandTokens(arguments.at(1));
}

String LaunchScript::launcherFile(const StringList&) {
    return runContext().launcherPath;
}

String LaunchScript::launcherDir(const StringList&) {
    return launcherDirectory();
}

String LaunchScript::applicationArchive(const StringList& arguments) {
    String& settled = runContext().applicationArchive;
    if (settled.empty())
        settled = arguments.count() == 0 ? extractArchives() : copyArchive(arguments.at(0));
    return settled;
}

String LaunchScript::tempDir(const StringList&) {
    String root = getTempRoot();
    if (endsWith(root, pathSeparator) != String::npos)
        root.erase(root.length() - 1);
    return root;
}

}  // namespace corvane
