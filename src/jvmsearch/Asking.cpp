// Asking of candidates within a time limit.
#include "jvmsearch/Asking.h"

#include "base/Log.h"
#include "foundation/TextLines.h"
#include "host/Environment.h"
#include "launch/LaunchScript.h"

namespace corvane {

namespace {

using End = LimitedRun::End;

constexpr const char* limitTag = "VERIFY_SECONDS";

// The line that the class prints in front of the properties' values.
constexpr const char* magicValue = "1739021872";

// Options that every JVM takes from the environment.
constexpr const char* optionVariables[] = {"JAVA_TOOL_OPTIONS", "_JAVA_OPTIONS",
                                           "JDK_JAVA_OPTIONS"};

String exeOf(const JvmFile& jvmFile) {
    String path = jvmFile.tag("JVM_HOME");
    ensureTrailingSeparator(path);
    return path.append(jvmFile.exePath());
}

String startOf(const JvmFile& jvmFile) {
    return exeOf(jvmFile) + "\n" + jvmFile.tag("REQ_JAVA_ARGS");
}

const Answer* findAnswer(const AnswerList& answers, const String& commandLine,
                         const String& start) {
    for (const Answer& answer : answers) {
        if (answer.commandLine == commandLine || (!answer.usable && answer.start == start))
            return &answer;
    }
    return nullptr;
}

String seconds(std::uint32_t number) {
    return decimalText(static_cast<std::int32_t>(number)) + (number == 1 ? " second" : " seconds");
}

void logSilence(const String& exe, const LimitedRun& run, std::uint32_t limit) {
    String words = run.failure;
    trim(words);
    switch (run.end) {
        case End::byItself:
            break;  // its output shows
        case End::notStarted:
            logMessage(exe + " could not be started: " + words, LogLevel::warning);
            break;
        case End::outOfTime:
            logMessage(exe + " was ended, since it gave no answer within " + seconds(limit),
                       LogLevel::warning);
            break;
        case End::tooMuchOutput:
            logMessage(exe + " was ended, since it wrote more than 4 MB", LogLevel::warning);
            break;
        case End::canceled:
            logMessage(exe + " was not asked to the end, since the search was canceled");
            break;
    }
}

// Runs the command once, and gives what it wrote with how it ended.
void run(const String& command, const String& directory, JvmFile& jvmFile, Answer& answer) {
    const std::uint32_t limit = verifySeconds(jvmFile);
    LaunchScript script(command, true, false, directory);
    const LimitedRun result = script.executeWithin(std::uint64_t{limit} * 1000, jvmFile);
    logSilence(exeOf(jvmFile), result, limit);
    answer.end = result.end;
    answer.output = script.stdOut();
    String line;
    answer.usable = result.end == End::byItself && findReport(answer.output, line) != String::npos;
}

// Those of the variables that have a value, as a list for people.
String setVariables() {
    String names;
    for (const char* const name : optionVariables) {
        const String value = getEnvironmentValue(name);
        if (!value.empty())
            names.append(names.empty() ? "" : ", ").append(name).append('=').append(value);
    }
    return names;
}

// A candidate that gave no report is asked once more without the variables, and the log tells if
// they are to blame. It stays refused: the application would be started with them.
void blameVariables(const String& command, const String& directory, JvmFile& jvmFile) {
    const String names = setVariables();
    if (names.empty())
        return;
    Answer again;
    {
        const VariableRemoved first(optionVariables[0]);
        const VariableRemoved second(optionVariables[1]);
        const VariableRemoved third(optionVariables[2]);
        run(command, directory, jvmFile, again);
    }
    if (again.usable)
        logMessage(exeOf(jvmFile) + " fails only because of " + names +
                       " in the environment. Change or remove that to have it accepted.",
                   LogLevel::warning);
}

}  // namespace

std::uint32_t verifySeconds(const JvmFile& jvmFile) {
    const String text = jvmFile.tag(limitTag);
    std::int32_t number = 0;
    if (text.empty() || (scanNumber(text, number) && number > 0))
        return static_cast<std::uint32_t>(number);
    logMessage(String("Invalid ") + limitTag + " setting (" + text + ") in JVM File ",
               LogLevel::warning);
    return 0;
}

std::size_t findReport(const String& output, String& line) {
    std::size_t pos = 0;
    while (pos < output.length()) {
        line.erase();
        readLine(output, pos, line);
        if (line == magicValue)
            return pos;
    }
    return String::npos;
}

const Answer& askHome(const String& command, const String& directory, JvmFile& jvmFile,
                      AnswerList& answers) {
    const String line = LaunchScript(command, true, false).commandLine(jvmFile, nullptr);
    const String start = startOf(jvmFile);
    if (const Answer* const known = findAnswer(answers, line, start)) {
        logMessage(exeOf(jvmFile) + " was asked before in this run; that answer is used again");
        return *known;
    }
    Answer& answer = *answers.add(std::make_unique<Answer>());
    answer.commandLine = line;
    answer.start = start;
    run(command, directory, jvmFile, answer);
    if (!answer.usable && answer.end != End::notStarted && answer.end != End::canceled)
        blameVariables(command, directory, jvmFile);
    return answer;
}

}  // namespace corvane
