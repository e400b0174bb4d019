// The expansion of a command template: its passes, and the functions but for the class path's work.
#include "launch/CommandExpansion.h"

#include <limits>
#include <utility>

#include "base/FileErrors.h"
#include "base/RunContext.h"
#include "foundation/LiteralText.h"
#include "foundation/TextLines.h"
#include "host/Environment.h"
#include "host/Paths.h"
#include "host/TempFiles.h"
#include "launch/ArgumentList.h"
#include "launch/ClassPath.h"
#include "launch/ListFiles.h"
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

// Copies a whole file, up to the first write that fails.
void copyStream(std::FILE* source, std::FILE* destination) {
    char block[4096];
    while (const std::size_t size = std::fread(block, 1, sizeof block, source)) {
        if (std::fwrite(block, 1, size, destination) != size)
            break;
    }
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
    StreamGuard output(openStream(destination.cstr(), "wb"));
    if (!input || !output)
        return {};
    runContext().applicationArchive = destination;
    copyStream(input.get(), output.get());
    closeWritten(std::move(output), destination);
    checkRead(input.get(), source);
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

const CommandExpansion::Function CommandExpansion::functions[10] = {
    {"REPLACE", 3, 3, "REPLACE function requires 3 arguments.", &CommandExpansion::replace},
    {"RUNTIME_SYSTEMPROP", 0, 0, "RUNTIME_SYSTEMPROP function takes no arguments.",
     &CommandExpansion::runtimeSystemProperties},
    {"RUNTIME_JAVAARGS", 0, 0, "RUNTIME_JAVAARGS function takes no arguments.",
     &CommandExpansion::runtimeJavaArgs},
    {"SYSTEMPROP", 2, 2, "SYSTEMPROP function requires 2 arguments.",
     &CommandExpansion::systemProperty},
    {"CP", 0, anyNumber, "", &CommandExpansion::classpath},
    {"IF_EXISTS", 2, 2, "IF_EXISTS function requires 2 arguments.", &CommandExpansion::ifExists},
    {"LAUNCHER_FILE", 0, 0, "LAUNCHER_FILE function takes 0 arguments.",
     &CommandExpansion::launcherFile},
    {"LAUNCHER_DIR", 0, 0, "LAUNCHER_DIR function takes 0 arguments.",
     &CommandExpansion::launcherDir},
    {"APPLICATION_ARCHIVE", 0, 1, "APPLICATION_ARCHIVE function takes 0 arguments.",
     &CommandExpansion::applicationArchive},
    {"TEMP_DIR", 0, 0, "TEMP_DIR function takes 0 arguments.", &CommandExpansion::tempDir},
};

String CommandExpansion::command() {
    String out = expandTemplate(*this, settings_.command, '%');
    out = jvmFile_.expandTokens(out);
    return withoutMarks(expandTemplate(*this, out, '#'));
}

void CommandExpansion::resolveToken(String& text, char separator, std::size_t start,
                                    std::size_t end) {
    const String name = text.substr(start + 1, end - start - 1);
    if (separator == '#') {
        text.replace(start, end - start + 1, getEnvironmentValue(name));
        return;
    }
    if (separator != '%')
        return;
    const Function& function = findFunction(text, name);
    std::size_t pos = end + 1;
    StringList arguments;
    parseArguments(text, pos, arguments);
    if (!function.takes(arguments.count()))
        scriptError(text, function.wrongNumber);
    const String result = (this->*function.evaluate)(arguments);
    // A list whose last closing quote ends the text leaves `pos` at npos: all of the rest goes.
    text.replace(start, pos - start, result);
}

const CommandExpansion::Function& CommandExpansion::findFunction(const String& text,
                                                                 const String& name) {
    for (const Function& function : functions) {
        if (name == function.name)
            return function;
    }
    scriptError(text, "Invalid function name (" + name + ").");
}

// The subject's own tokens aren't expanded yet, so the values that they take on aren't touched.
String CommandExpansion::replace(const StringList& arguments) {
    const String search = withoutMarks(jvmFile_.expandTokens(arguments.at(0)));
    const String replacement = jvmFile_.expandTokens(arguments.at(1));
    const String subject = arguments.at(2);
    // An empty search text would be found everywhere and for ever: it replaces nothing.
    return search.empty() ? subject : replaceAll(subject, search, replacement);
}

String CommandExpansion::runtimeSystemProperties(const StringList&) {
    String out;
    forEachLine(companionFile(".sp"), [&](const String& line) {
        const std::size_t equals = line.find('=');
        if (equals != String::npos)
            appendWord(out, systemPropertyText(line.substr(0, equals), line.substr(equals + 1)));
    });
    return out;
}

String CommandExpansion::runtimeJavaArgs(const StringList&) {
    String out;
    forEachLine(companionFile(".ja"),
                [&](const String& line) { appendWord(out, jvmFile_.expandTokens(line)); });
    const String required = jvmFile_.tag("REQ_JAVA_ARGS");
    return required.empty() ? out : out + " " + required;
}

String CommandExpansion::systemProperty(const StringList& arguments) {
    return systemPropertyText(arguments.at(0), arguments.at(1));
}

String CommandExpansion::systemPropertyText(const String& name, const String& value) {
    return jvmFile_.tag("SYSTEM") + name + jvmFile_.tag("SYSTEM_SEPARATOR") +
           jvmFile_.expandTokens(value);
}

String CommandExpansion::classpath(const StringList& arguments) {
    const bool inEnvironment = jvmFile_.tag("USE_CP_ENV_VAR") == "1";
    const String archive = expandTemplate(*this, settings_.archive, '%');
    ClassPath path(jvmFile_, settings_, inEnvironment);
    path.join(arguments, archive);
    runContext().classPath = withoutMarks(path.text());
    if (!inEnvironment)
        return jvmFile_.tag("CLASSPATH") + path.text();
    path.passInEnvironment();
    return {};
}

String CommandExpansion::ifExists(const StringList& arguments) {
    if (jvmFile_.tag(arguments.at(0).cstr()).empty())
        return {};
    return jvmFile_.expandTokens(arguments.at(1));
}

String CommandExpansion::launcherFile(const StringList&) {
    return literal(runContext().launcherPath);
}

String CommandExpansion::launcherDir(const StringList&) {
    return literal(launcherDirectory());
}

String CommandExpansion::applicationArchive(const StringList& arguments) {
    String& settled = runContext().applicationArchive;
    if (settled.empty())
        settled = arguments.count() == 0 ? extractArchives() : copyArchive(arguments.at(0));
    return literal(settled);
}

String CommandExpansion::tempDir(const StringList&) {
    String root = getTempRoot();
    if (endsWith(root, pathSeparator) != String::npos)
        root.erase(root.length() - 1);
    return literal(root);
}

}  // namespace corvane
