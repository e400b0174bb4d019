// The verification of a candidate.
#include "jvmsearch/Verification.h"

#include "base/Log.h"
#include "base/Status.h"
#include "base/Ui.h"
#include "foundation/TextLines.h"
#include "jvmsearch/JvmAdvice.h"
#include "launch/LaunchScript.h"
#include "launcherfile/Extraction.h"

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

// Runs the class and compares what it reports; what doesn't fit goes to `refusal`.
bool answers(const String& command, JvmFile& jvmFile, const VerifyClass& verifyClass,
             const JvmPropertyList& properties, Refusal& refusal) {
    if (verifyClass.answers != nullptr && verifySeconds(jvmFile) > 0) {
        const Answer& answer =
            askHome(command, verifyClass.directory, jvmFile, *verifyClass.answers);
        return answer.end == LimitedRun::End::byItself &&
               matchProperties(answer.output, properties, &refusal);
    }
    LaunchScript script(command, true, false, verifyClass.directory);
    script.execute(jvmFile, nullptr, false);
    return matchProperties(script.stdOut(), properties, &refusal);
}

}  // namespace

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
    if (!fileExists(path)) {
        logMessage(path + " does not exist");
        uiStepProgress(missingStep);
        return nullptr;
    }
    if (!runVerification(jvmFile, home, verifyClass))
        return nullptr;
    logMessage("Found matching JVM at " + home);
    return std::make_unique<JvmMatch>(home, jvmFile.tags());
}

bool runVerification(JvmFile& jvmFile, const String& home, const VerifyClass& verifyClass) {
    jvmFile.tags().setValue("JVM_HOME", home);
    String command = String("\"@JVM_HOME@") + pathSeparator + "@JVM_EXE@\" %CP%(" +
                     classpathArgument(verifyClass.classpath) + ")  @REQ_JAVA_ARGS@ " +
                     verifyClass.name;
    JvmPropertyList properties;
    for (const String& line : jvmFile.tags().values(propertiesTag))
        addProperty(line, properties, command);
    Refusal refusal{home, {}, {}, {}};
    const bool matches = answers(command, jvmFile, verifyClass, properties, refusal);
    if (!matches)
        noteRefusal(refusal);
    uiStepProgress(verifiedStep);
    return matches;
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
