// The action DESCRIBE_ALL, for one home.
#include "jvmsearch/Description.h"

#include "base/Ui.h"
#include "foundation/StringList.h"
#include "foundation/TextLines.h"
#include "launcherfile/Extraction.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

constexpr std::uint32_t usualLimit = 10;  // seconds, for JVM files that set none

// What is asked besides the properties of the JVM files.
constexpr const char* usualNames[] = {
    "java.version",
    "java.version.date",
    "java.vendor",
    "java.vendor.version",
    "java.runtime.name",
    "java.runtime.version",
    "java.vm.name",
    "java.vm.vendor",
    "java.vm.version",
    "java.vm.info",
    "java.specification.version",
    "java.class.version",
    "java.home",
    "os.name",
    "os.version",
    "os.arch",
    "sun.arch.data.model",
    "file.encoding",
    "native.encoding",
    "sun.jnu.encoding",
    "user.language",
    "user.country",
    "corvane.java.feature",
    "corvane.java.bits",
    "corvane.java.jdk",
    "corvane.java.headless",
};

// Whether the home has the executable of a JVM file.
bool suits(const JvmFile& jvmFile, const String& home) {
    String path = home;
    ensureTrailingSeparator(path);
    return fileExists(path.append(jvmFile.exePath()));
}

// What a home was asked, and what it said, name by name.
struct Interview {
    StringList names;
    StringList values;

    void addName(const String& name) {
        if (!names.contains(name))
            names.add(name);
    }
    // Null for a name that the report no longer holds.
    const String* value(const String& name) const {
        for (std::int32_t i = 0; i < values.count(); ++i) {
            if (names.at(i) == name)
                return &values.at(i);
        }
        return nullptr;
    }
};

void addNames(const JvmFile& jvmFile, Interview& interview) {
    for (const String& line : jvmFile.tags().values("JVM_PROPERTIES")) {
        if (const auto property = parseProperty(line))
            interview.addName(property->name);
    }
}

void readValues(const String& output, Interview& interview) {
    String line;
    std::size_t pos = findReport(output, line);
    while (pos < output.length() && interview.values.count() < interview.names.count()) {
        line.erase();
        readLine(output, pos, line);
        interview.values.add(line);
    }
}

// Whether the JVM file accepts what was said; if not, what it wants otherwise.
bool accepts(const JvmFile& jvmFile, const Interview& interview, Refusal& refusal) {
    for (const String& line : jvmFile.tags().values("JVM_PROPERTIES")) {
        const auto property = parseProperty(line);
        const String* const value = property == nullptr ? nullptr : interview.value(property->name);
        if (value != nullptr && !property->accepts(*value)) {
            refusal = {refusal.home, property->name, property->wanted(), *value};
            return false;
        }
    }
    return true;
}

Statement ask(JvmFile& jvmFile, const VerifyClass& verifyClass, Interview& interview) {
    String command = verificationCommand(verifyClass);
    for (const String& name : interview.names)
        command.append(' ').append(name);
    const std::uint32_t limit = verifySeconds(jvmFile);
    Statement statement = listen(command, jvmFile, limit == 0 ? usualLimit : limit, verifyClass);
    readValues(statement.output, interview);
    return statement;
}

// The first of the JVM files that accepts the home, with what is to be said of it; else the last
// one whose executable it has.
const JvmFile* judge(const JvmFileList& jvmFiles, const String& home, const Interview& interview,
                     Finding& finding) {
    const JvmFile* judged = nullptr;
    for (const JvmFile& jvmFile : jvmFiles) {
        if (!suits(jvmFile, home))
            continue;
        judged = &jvmFile;
        if (accepts(jvmFile, interview, finding.refusal)) {
            finding = {"accepted", {}, {}};
            break;
        }
    }
    return judged;
}

JvmFile* firstThatSuits(JvmFileList& jvmFiles, const String& home) {
    for (JvmFile& jvmFile : jvmFiles) {
        if (suits(jvmFile, home))
            return &jvmFile;
    }
    return nullptr;
}

void print(const Candidate& candidate, const JvmFile& jvmFile, const Finding& finding,
           const Interview& interview, std::uint64_t start) {
    ReportObject object = candidateObject(candidate, jvmFile, finding);
    object.open("properties");
    for (std::int32_t i = 0; i < interview.values.count(); ++i)
        object.addIn(interview.names.at(i), interview.values.at(i));
    object.close().add("milliseconds", static_cast<std::int64_t>(GetTickCount64() - start));
    uiPrintResult(object.text());
    object.write();
}

}  // namespace

void describeHome(const Candidate& candidate, JvmFileList& jvmFiles,
                  const VerifyClass& verifyClass) {
    JvmFile* const first = firstThatSuits(jvmFiles, candidate.home);
    if (first == nullptr)
        return;
    const std::uint64_t start = GetTickCount64();
    Interview interview;
    for (const char* const name : usualNames)
        interview.addName(name);
    for (const JvmFile& jvmFile : jvmFiles)
        addNames(jvmFile, interview);
    first->tags().setValue("JVM_HOME", candidate.home);
    const Statement statement = ask(*first, verifyClass, interview);
    Finding finding;
    finding.reason = statement.reason;
    const JvmFile* judged = first;
    if (statement.silence != nullptr)
        finding.result = statement.silence;
    else if (interview.values.count() > 0)
        judged = judge(jvmFiles, candidate.home, interview, finding);
    else if (finding.reason.empty())
        finding.reason = lastWords(statement.output);
    print(candidate, *judged, finding, interview, start);
}

}  // namespace corvane
