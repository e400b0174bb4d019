// The launch script: its record, and the reading of function calls in its template.
#include "launch/LaunchScript.h"

#include "base/Log.h"
#include "foundation/ArgumentText.h"
#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"
#include "host/Environment.h"
#include "launch/TemplateFunctions.h"

namespace corvane {

namespace {

// Sets a pointer for a scope.
class PointerScope {
  public:
    PointerScope(JvmFile*& place, JvmFile& object) : place_(place) { place_ = &object; }
    PointerScope(const PointerScope&) = delete;
    PointerScope& operator=(const PointerScope&) = delete;
    ~PointerScope() { place_ = nullptr; }

  private:
    JvmFile*& place_;
};

String nearCharacter(const char* expected, std::size_t position) {
    return String(expected) + " (near character " +
           decimalText(static_cast<std::int32_t>(position)) + ")";
}

}  // namespace

LaunchScript::LaunchScript(const TagFile& tags, bool collectOutput)
    : command_(tags.value("COMMAND", 0)),
      collectOutput_(collectOutput),
      displayConsole_(tags.boolValue("DISPLAY_CONSOLE", false)),
      autoSetWorkingDir_(tags.boolValue("AUTO_SET_WORKING_DIR", true)),
      description_(tags.value("DESC", 0)),
      archive_(tags.value("ARCHIVE", 0)) {}

LaunchScript::LaunchScript(const String& commandTemplate, bool collectOutput,
                           bool useEmbeddedArchives)
    : command_(commandTemplate),
      collectOutput_(collectOutput),
      useEmbeddedArchives_(useEmbeddedArchives) {}

String LaunchScript::expandCommand(JvmFile& jvmFile) {
    const PointerScope scope(jvmFile_, jvmFile);
    String out = expandTemplate(*this, command_, '%');
    out = jvmFile.expandTokens(out);
    return expandTemplate(*this, out, '#');
}

void LaunchScript::resolveToken(String& text, char separator, std::size_t start, std::size_t end) {
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
    if (arguments.count() < function.fewest || arguments.count() > function.most)
        scriptError(text, function.wrongNumber);
    const String result = (this->*function.evaluate)(arguments);
    // A list whose last closing quote ends the text leaves `pos` at npos: all of the rest goes.
    text.replace(start, pos - start, result);
}

const LaunchScript::Function& LaunchScript::findFunction(const String& text, const String& name) {
    for (const Function* function = functions; function->name != nullptr; ++function) {
        if (name == function->name)
            return *function;
    }
    scriptError(text, "Invalid function name (" + name + ").");
}

void LaunchScript::parseArguments(const String& text, std::size_t& pos, StringList& arguments) {
    enum class State { open, argument, next, done };
    State state = State::open;
    while (state != State::done && pos != String::npos) {
        const std::size_t mark = pos;
        pos = text.findFirstNotOf(whitespaceChars, pos);
        const char character = pos == String::npos ? '\0' : text.at(pos);
        if (state == State::open) {
            if (character != '(')
                scriptError(text, nearCharacter("Expected left parenthesis.", mark));
            ++pos;
            state = State::argument;
        } else if (character == ')') {
            ++pos;
            state = State::done;
        } else if (state == State::argument) {
            if (character != '"')
                scriptError(text, nearCharacter("Expected string arg.", mark));
            ++pos;
            arguments.add(readArgument(text, pos, true));
            state = State::next;
        } else {
            if (character != ',')
                scriptError(text, nearCharacter("Expected right parenthesis.", mark));
            ++pos;
            state = State::argument;
        }
    }
}

void LaunchScript::scriptError(const String& text, const String& message) {
    logMessage("Launch command:");
    logMessage(text);
    throw LauncherException("Launch script error: " + message);
}

}  // namespace corvane
