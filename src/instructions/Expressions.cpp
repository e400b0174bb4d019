// The expressions of the instruction language: replacement of variable references, conversion to
// numbers, and the cutting of string arguments.
#include <algorithm>

#include "foundation/ArgumentText.h"
#include "foundation/Exceptions.h"
#include "foundation/LiteralText.h"
#include "foundation/TextLines.h"
#include "instructions/Instructions.h"
#include "variables/VariableReference.h"

namespace corvane {

namespace {

// A value may hold references, and there are fifteen variables: an expansion that takes more passes
// than this, or grows beyond all use, has no end.
constexpr int mostPasses = 32;
constexpr std::size_t longestExpansion = std::size_t{256} << 10;

// The reference that is no variable: only a child sets it.
constexpr const char* exitValueName = "EXIT_VALUE";

}  // namespace

void Instructions::expand(String& text, const char* context) {
    expandMarked(text, context);
    text = withoutMarks(text);
}

void Instructions::expandMarked(String& text, const char* context) {
    if (text.empty())
        fail(String(context) + " Empty expression.");
    bool replaced = true;
    for (int pass = 0; replaced; ++pass) {
        if (pass == mostPasses)
            fail(String(context) + " Invalid variable specification.");
        replaceReferences(text, context, replaced);
    }
}

// One pass: each reference becomes its value, which only the next pass looks into, and each doubled
// at sign becomes one.
void Instructions::replaceReferences(String& text, const char* context, bool& replaced) {
    replaced = false;
    if (text.find('@') == String::npos)
        return;
    String out;
    std::size_t copied = 0;
    for (std::size_t open = text.find('@'); open != String::npos; open = text.find('@', copied)) {
        const std::size_t close = text.find('@', open + 1);
        if (close == String::npos || out.length() > longestExpansion)
            fail(String(context) + " Invalid variable specification.");
        out.append(text, copied, open - copied);
        const String name = text.substr(open + 1, close - open - 1);
        out.append(name.empty() ? "@" : referenceText(name, context));
        replaced = replaced || !name.empty();
        copied = close + 1;
    }
    text = out.append(text, copied, String::npos);
}

String Instructions::referenceText(const String& name, const char* context) const {
    if (name == exitValueName)
        return decimalText(exitValue_);
    VariableReference reference{};
    resolveReference(reference, name, context);
    return valueText(reference);
}

std::int32_t Instructions::evaluateInteger(const String& expression, const char* context) {
    String text = expression;
    expand(text, context);
    std::int32_t value = 0;
    if (!scanNumber(text, value))
        fail(String(context) + "Invalid numeric expression (" + text + ")");
    return value;
}

std::int16_t Instructions::evaluateShort(const String& expression, const char* context) {
    String text = expression;
    expand(text, context);
    std::int16_t value = 0;
    if (!scanNumber(text, value))
        fail(String(context) + " Invalid numeric expression (" + text + ")");
    return value;
}

bool Instructions::evaluateBool(const String& expression, const char* context) {
    const std::int32_t value = evaluateInteger(expression, context);
    if (value != 0 && value != 1)
        fail(String(context) + " Invalid boolean value (" + expression + ")");
    return value == 1;
}

// First finds where the argument ends; the last character of the line is never part of it, since
// a further argument follows. A quote ends it that is the odd one of its run.
void Instructions::parseStringArgument(const String& line, std::size_t& pos, String& argument,
                                       const char* context) {
    argument.erase();
    pos = std::min(line.findFirstNotOf(whitespaceChars, pos), line.length());
    const std::size_t end = line.empty() ? 0 : line.length() - 1;
    const bool quoted = pos < end && line.at(pos) == '"';
    if (quoted)
        argument.append(line.at(pos++));
    std::size_t quotesInRun = 0;
    bool ended = false;
    for (; pos < end && !ended; ++pos) {
        const char character = line.at(pos);
        if (!quoted && isWhite(character))
            break;
        argument.append(character);
        quotesInRun = character == '"' ? quotesInRun + 1 : 0;
        ended = quoted && quotesInRun % 2 == 1 && line.at(pos + 1) != '"';
    }
    if (quoted && !ended)
        throw LauncherException("Expected ending quote in " + argument + ":  " + context);
    // Nothing is left behind an argument that reaches the end: the further one is missing.
    if (pos == end && !ended)
        pos = line.length();
    if (argument.empty())
        return;
    std::size_t start = quoted ? 1 : 0;
    argument = readArgument(argument, start, quoted);
    expand(argument, context);
}

}  // namespace corvane
