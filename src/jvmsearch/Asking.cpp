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

// Why a candidate was ended or never began; empty for one that ended by itself.
String reasonFor(const LimitedRun& run, std::uint32_t limit) {
    String words = run.failure;
    trim(words);
    switch (run.end) {
        case End::byItself:
            break;
        case End::notStarted:
            return "could not be started: " + words;
        case End::outOfTime:
            return "was ended, since it gave no answer within " + seconds(limit);
        case End::tooMuchOutput:
            return "was ended, since it wrote more than 1 MB";
        case End::canceled:
            return "was not asked to the end, since the search was canceled";
    }
    return {};
}

// Runs the command once, and gives what it wrote with how it ended.
void run(const Question& question, JvmFile& jvmFile, Answer& answer) {
    LaunchScript script(question.command, true, false, question.directory);
    const LimitedRun result = script.executeWithin(std::uint64_t{question.limit} * 1000, jvmFile);
    answer.end = result.end;
    answer.reason = reasonFor(result, question.limit);
    if (!answer.reason.empty())
        logMessage(exeOf(jvmFile) + " " + answer.reason, LogLevel::warning);
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
void blameVariables(const Question& question, JvmFile& jvmFile, Answer& answer) {
    const String names = setVariables();
    if (names.empty())
        return;
    Answer again;
    {
        const VariableRemoved first(optionVariables[0]);
        const VariableRemoved second(optionVariables[1]);
        const VariableRemoved third(optionVariables[2]);
        run(question, jvmFile, again);
    }
    if (!again.usable)
        return;
    answer.reason = "fails only because of " + names +
                    " in the environment. Change or remove that to have it accepted.";
    logMessage(exeOf(jvmFile) + " " + answer.reason, LogLevel::warning);
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

const Answer& askHome(const Question& question, JvmFile& jvmFile, AnswerList& answers) {
    const String line = LaunchScript(question.command, true, false).commandLine(jvmFile, nullptr);
    const String start = startOf(jvmFile);
    if (const Answer* const known = findAnswer(answers, line, start)) {
        logMessage(exeOf(jvmFile) + " was asked before in this run; that answer is used again");
        return *known;
    }
    Answer& answer = *answers.add(std::make_unique<Answer>());
    answer.commandLine = line;
    answer.start = start;
    run(question, jvmFile, answer);
    if (!answer.usable && answer.end != End::notStarted && answer.end != End::canceled)
        blameVariables(question, jvmFile, answer);
    return answer;
}

}  // namespace corvane
