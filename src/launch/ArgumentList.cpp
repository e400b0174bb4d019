// The reading of an argument list.
#include "launch/ArgumentList.h"

#include "base/Log.h"
#include "foundation/ArgumentText.h"
#include "foundation/Exceptions.h"
#include "foundation/LiteralText.h"
#include "foundation/TextLines.h"

namespace corvane {

namespace {

String nearCharacter(const char* expected, std::size_t position) {
    return String(expected) + " (near character " +
           decimalText(static_cast<std::int32_t>(position)) + ")";
}

}  // namespace

void parseArguments(const String& text, std::size_t& pos, StringList& arguments) {
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

void scriptError(const String& text, const String& message) {
    logMessage("Launch command:");
    logMessage(withoutMarks(text));
    throw LauncherException("Launch script error: " + withoutMarks(message));
}

}  // namespace corvane
