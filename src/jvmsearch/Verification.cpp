// The verification of a candidate.
#include "jvmsearch/Verification.h"

#include <cstring>

#include "base/Log.h"
#include "base/Status.h"
#include "base/Ui.h"
#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"
#include "jvmsearch/Finding.h"
#include "jvmsearch/JvmAdvice.h"
#include "launch/LaunchScript.h"
#include "launcherfile/Extraction.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

constexpr const char* propertiesTag = "JVM_PROPERTIES";

constexpr std::int32_t missingStep = 2;
constexpr std::int32_t verifiedStep = 6;

// The class path as an argument of CP: one that has its own quotes keeps them.
String classpathArgument(const String& classpath) {
    const bool quoted =
        !classpath.empty() && classpath.at(0) == '"' && classpath.at(classpath.length() - 1) == '"';
    return quoted ? "\"\"" + classpath + "\"\"" : classpath;
}

// Adds the property that `line` asks for to the list and its name to the command.
void addProperty(const String& line, JvmPropertyList& properties, String& command) {
    auto property = parseProperty(line);
    if (property == nullptr || !property->canBeMet())
        logMessage(String("Invalid ") + propertiesTag + " setting (" + line + ") in JVM File ",
                   LogLevel::warning);
    if (property == nullptr)
        return;
    command.append(' ').append(property->name);
    properties.add(std::move(property));
}

// Runs the class and compares what it reports; `properties` are those that it was asked for.
Finding examine(JvmFile& jvmFile, const String& home, const VerifyClass& verifyClass,
                JvmPropertyList& properties, String& output) {
    jvmFile.tags().setValue("JVM_HOME", home);
    String command = verificationCommand(verifyClass);
    for (const String& line : jvmFile.tags().values(propertiesTag))
        addProperty(line, properties, command);
    const Statement statement = listen(command, jvmFile, verifySeconds(jvmFile), verifyClass);
    output = statement.output;
    Finding finding{"accepted", {home, {}, {}, {}}, statement.reason};
    if (statement.silence != nullptr) {
        finding.result = statement.silence;
    } else if (!matchProperties(output, properties, &finding.refusal)) {
        finding.result = "refused";
        if (finding.refusal.property.empty() && finding.reason.empty())
            finding.reason = lastWords(output);
    }
    uiStepProgress(verifiedStep);
    return finding;
}

void report(const JvmFile& jvmFile, const String& home, const Finding& finding,
            std::uint64_t startTick, const String& output, const JvmPropertyList& properties) {
    if (!reportWanted())
        return;
    ReportObject object = candidateObject(candidateNow(home), jvmFile, finding);
    addProperties(object, output, properties);
    object.add("milliseconds", static_cast<std::int64_t>(GetTickCount64() - startTick)).write();
}

}  // namespace

String verificationCommand(const VerifyClass& verifyClass) {
    return String("\"@JVM_HOME@") + pathSeparator + "@JVM_EXE@\" %CP%(" +
           classpathArgument(verifyClass.classpath) + ")  @REQ_JAVA_ARGS@ " + verifyClass.name;
}

Statement listen(const String& command, JvmFile& jvmFile, std::uint32_t limit,
                 const VerifyClass& verifyClass) {
    if (verifyClass.answers == nullptr || limit == 0) {
        LaunchScript script(command, true, false, verifyClass.directory);
        script.execute(jvmFile, nullptr, false);
        return {script.stdOut(), nullptr, {}};
    }
    using End = LimitedRun::End;
    const Answer& answer =
        askHome({command, verifyClass.directory, limit}, jvmFile, *verifyClass.answers);
    const char* const silence = answer.end == End::byItself     ? nullptr
                                : answer.end == End::notStarted ? "unstartable"
                                : answer.end == End::outOfTime  ? "timeout"
                                                                : "refused";
    return {answer.output, silence, answer.reason};
}

// The last words of a candidate that gave no report, as a reason.
String lastWords(const String& output) {
    constexpr std::size_t most = 1000;
    String words = output;
    trim(words);
    if (words.length() > most)
        words.erase(0, words.length() - most);
    return words.empty() ? "wrote nothing" : "gave no report, but wrote: " + words;
}

std::unique_ptr<JvmMatch> verifyHome(JvmFile& jvmFile, const String& home,
                                     const VerifyClass& verifyClass) {
    const String exe = jvmFile.exePath();
    if (exe.empty() || home.empty())
        return nullptr;
    const StatusScope scope;
    setDetail(Detail::verifying, jvmFile.tag("DESC"));
    String path = home;
    ensureTrailingSeparator(path);
    path.append(exe);
    logMessage("Verifying JVM at " + path + "\n   for JVM: " + jvmFile.tag("DESC"));
    const std::uint64_t start = GetTickCount64();
    String output;
    JvmPropertyList properties;
    if (!fileExists(path)) {
        logMessage(path + " does not exist");
        uiStepProgress(missingStep);
        report(jvmFile, home, {"missing", {}, {}}, start, output, properties);
        return nullptr;
    }
    if (verifyClass.gathered != nullptr) {
        gather(home, *verifyClass.gathered);
        return nullptr;
    }
    Finding finding;
    try {
        finding = examine(jvmFile, home, verifyClass, properties, output);
    } catch (const LauncherException& failure) {
        report(jvmFile, home, {"unstartable", {}, failure.message}, start, output, properties);
        throw;
    }
    report(jvmFile, home, finding, start, output, properties);
    if (std::strcmp(finding.result, "accepted") != 0) {
        noteRefusal(finding.refusal);
        return nullptr;
    }
    logMessage("Found matching JVM at " + home);
    return std::make_unique<JvmMatch>(home, jvmFile.tags());
}

bool matchProperties(const String& output, const JvmPropertyList& properties, Refusal* refusal) {
    String line;
    std::size_t pos = findReport(output, line);
    if (pos == String::npos) {
        logMessage("Invalid magic value: " + line + "\n", LogLevel::error);
        return false;
    }
    // Properties whose values the output no longer holds aren't compared.
    for (const JvmProperty& property : properties) {
        if (pos >= output.length())
            return true;
        line.erase();
        readLine(output, pos, line);
        if (!property.accepts(line)) {
            if (refusal != nullptr)
                *refusal = {refusal->home, property.name, property.wanted(), line};
            return false;
        }
    }
    return true;
}

}  // namespace corvane
