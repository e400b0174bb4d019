// The interpreter loop and the commands' arguments.
#include "instructions/Instructions.h"

#include "base/RunContext.h"
#include "foundation/ArgumentText.h"
#include "foundation/Exceptions.h"
#include "foundation/LiteralText.h"
#include "foundation/TextLines.h"
#include "launcherfile/LauncherFile.h"
#include "platform/Platform.h"
#include "variables/VariableReference.h"

namespace corvane {

namespace {

constexpr std::int32_t highestInstallMode = 2;

}  // namespace

struct Instructions::Command {
    const char* name;
    void (Instructions::*carryOut)(Line& line);
};

const Instructions::Command Instructions::commands[] = {
    {"FIND_JVM", &Instructions::findJvm},
    {"VERIFY", &Instructions::verify},
    {"GOTO", &Instructions::goTo},
    {"JMP0", &Instructions::jumpIfZero},
    {"SET", &Instructions::set},
    {"INITIALIZE_UI", &Instructions::initializeUi},
    {"INSTALL_JVM", &Instructions::installJvm},
    {"LAUNCH", &Instructions::launch},
    {"ILAUNCH", &Instructions::internalLaunch},
    {"EXECUTE_LAUNCHER", &Instructions::executeLauncher},
    {"EXIT", &Instructions::exit},
    {"SHOW", &Instructions::show},
};

std::int32_t Instructions::run() {
    currentLine_ = 0;
    exitValue_ = 0;
    // A request to end the run ends it behind the command that it met.
    while (endRequests() == 0 && runNextLine()) {
    }
    return exitValue_;
}

bool Instructions::runNextLine() {
    if (currentLine_ >= lines_->count())
        return false;
    surplus_.erase();
    runLine({lines_->at(currentLine_)});
    ++currentLine_;
    return true;
}

const char* Instructions::commandName(std::size_t index) {
    return index < std::size(commands) ? commands[index].name : nullptr;
}

void Instructions::runLine(Line line) {
    bool noMore = false;
    const String word = nextToken(line.text, line.pos, noMore);
    if (noMore)
        fail("No command specified.");
    if (word.at(0) == ':' || word == "//")
        return;
    for (const Command& command : commands) {
        if (word == command.name) {
            (this->*command.carryOut)(line);
            if (surplus_.empty())
                surplus_ = restOf(line);
            return;
        }
    }
    fail("Invalid command (" + word + "). ");
}

void Instructions::fail(const String& message) const {
    throw InstructionsException(message, currentLine_ + 1);
}

String Instructions::requiredToken(Line& line, const char* missing) {
    bool noMore = false;
    const String token = nextToken(line.text, line.pos, noMore);
    if (noMore)
        fail(missing);
    return token;
}

std::int32_t Instructions::requiredInteger(Line& line, const char* missing) {
    return evaluateInteger(requiredToken(line, missing), "");
}

std::int16_t Instructions::requiredShort(Line& line, const char* missing) {
    return evaluateShort(requiredToken(line, missing), "");
}

bool Instructions::requiredBool(Line& line, const char* missing) {
    return evaluateBool(requiredToken(line, missing), "");
}

// The first line of the script isn't searched.
std::int32_t Instructions::findLabel(const String& label) {
    String target = ":" + label;
    expand(target, "Invalid label specified.");
    if (target == ":")
        fail("Label " + label + " resolved to a blank string. Labels cannot be blank.");
    std::int32_t& found = foundLabels_[hashOf(target.view()) % std::size(foundLabels_)];
    if (found > 0 && lines_->at(found) == target)
        return found;
    for (std::int32_t i = 1; i < lines_->count(); ++i) {
        if (lines_->at(i) == target)
            return found = i;
    }
    fail("Label not found (" + label + ")");
}

// The run goes on behind the label.
void Instructions::jump(const String& label) {
    currentLine_ = findLabel(label);
}

void Instructions::findJvm(Line& line) {
    const bool showUi = requiredBool(
        line,
        "The first argument to FIND_JVM should be a 1 if the UI should be displayed or a 0 if the "
        "UI should be suppressed.");
    const bool showFailure = requiredBool(
        line,
        "The second argument to FIND_JVM should be a 1 if a find failure message should be "
        "displayed in a UI or 0 if no message should be displayed.");
    work_->findJvm(showUi, showFailure);
}

void Instructions::verify(Line& line) {
    const bool showUi = requiredBool(
        line,
        "The first argument to VERIFY should be a 1 if the UI should be displayed or a 0 if the UI "
        "should be suppressed.");
    const bool showFailure = requiredBool(
        line,
        "The second argument to VERIFY should be a 1 if a find failure message should be displayed "
        "in a UI or 0 if no message should be displayed.");
    const std::int32_t fileId = requiredInteger(
        line, "The third argument to VERIFY should be the file index number of the jvm file.");
    work_->verify(showUi, showFailure, fileId);
}

void Instructions::goTo(Line& line) {
    jump(requiredToken(line, "The GOTO command requires a label as its only argument."));
}

void Instructions::jumpIfZero(Line& line) {
    constexpr const char* context = "The second argument to JMP0 must be numeric.";
    bool noMore = false;
    const std::int32_t value = evaluateInteger(nextToken(line.text, line.pos, noMore), context);
    const String label = requiredToken(line, "JMP0 requires a jump label as its second argument.");
    if (value == 0)
        jump(label);
}

// What stands behind the words read so far.
String Instructions::restOf(const Line& line) {
    String rest = line.pos < line.text.length() ? line.text.substr(line.pos) : String();
    trim(rest);
    return rest;
}

String Instructions::takeRest(Line& line) {
    String rest = restOf(line);
    line.pos = line.text.length();
    return rest;
}

// A quoted text or a word, expanded, with its marks. What stands behind it is the surplus.
String Instructions::expandedValue(const String& text, const char* context) {
    const bool quoted = text.at(0) == '"';
    std::size_t pos = quoted ? 1 : 0;
    String value = readArgument(text, pos, quoted);
    if (pos != String::npos)
        surplus_ = text.substr(pos);
    trim(surplus_);
    expandMarked(value, context);
    return value;
}

void Instructions::set(Line& line) {
    const String rest = takeRest(line);
    const std::size_t equals = rest.find('=');
    if (equals == String::npos)
        fail("SET statement is missing =.");
    String name = rest.substr(0, equals);
    String value = rest.substr(equals + 1);
    trim(name);
    trim(value);
    try {
        VariableReference reference{};
        resolveReference(reference, name,
                         "Invalid variable specified on left hand side of SET statement.");
        if (!value.empty())
            value = expandedValue(value, "Invalid expression specified for SET command");
        assignValue(reference, value, "Invalid value specified for SET command");
    } catch (const LauncherException& failure) {
        fail(failure.message);
    }
}

void Instructions::initializeUi(Line&) {
    work_->initializeUi();
}

void Instructions::installJvm(Line& line) {
    constexpr const char* usage = "The first argument to INSTALL_JVM should be a 0, 1 or 2.";
    const std::int32_t mode = requiredInteger(line, usage);
    if (mode < 0 || mode > highestInstallMode)
        fail(usage);
    work_->installJvm(static_cast<InstallMode>(mode));
}

void Instructions::launch(Line& line) {
    String jvmFilePath;
    parseStringArgument(line.text, line.pos, jvmFilePath,
                        "Invalid jvm file name specified in LAUNCH.");
    const std::int16_t seconds =
        requiredShort(line,
                      "The second argument to LAUNCH should be the number of seconds to display "
                      "the UI during the launch.");
    exitValue_ = work_->launch(jvmFilePath, seconds);
}

void Instructions::internalLaunch(Line& line) {
    const std::int32_t fileId = requiredInteger(
        line, "The first argument to ILAUNCH should be the file index number of the jvm file.");
    const std::int16_t seconds =
        requiredShort(line,
                      "The second argument to ILAUNCH should be the number of seconds to display "
                      "the UI during the launch.");
    exitValue_ = work_->internalLaunch(fileId, seconds);
}

void Instructions::executeLauncher(Line& line) {
    work_->executeLauncher(
        requiredInteger(line,
                        "The argument to EXECUTE_LAUNCHER should be the position of the embedded "
                        "launcher in the file index."));
}

// The line behind the last one ends the run.
void Instructions::exit(Line& line) {
    exitValue_ =
        requiredInteger(line, "The EXIT command requires the exit value as its only argument.");
    currentLine_ = lines_->count();
}

void Instructions::show(Line& line) {
    String text = takeRest(line);
    if (text.empty())
        fail("The SHOW command requires the text of a message as its only argument.");
    try {
        text = withoutMarks(expandedValue(text, "Invalid text specified for SHOW command."));
    } catch (const LauncherException& failure) {
        fail(failure.message);
    }
    work_->show(text);
}

std::int32_t runInstructions() {
    Instructions* const instructions = runContext().launcherFile->instructions.get();
    if (instructions == nullptr)
        return -1;
    try {
        return instructions->run();
    } catch (const InstructionsException& failure) {
        throw LauncherException("Error in instructions. " + failure.message + " Line number (" +
                                decimalText(failure.lineNumber) + ")");
    }
}

}  // namespace corvane
