// The fifteen variables.
#include "variables/VariableTable.h"

#include <iterator>

#include "base/RunContext.h"
#include "foundation/Exceptions.h"
#include "foundation/LiteralText.h"
#include "foundation/TextLines.h"

namespace corvane {

namespace {

String& stringVariable(std::int32_t number) {
    if (!VariableTable::isValidStringNumber(number))
        throw LauncherException("Invalid string variable number: " + decimalText(number));
    return runContext().stringVariables[number - 1];
}

std::int32_t& numericVariable(std::int32_t number) {
    if (!VariableTable::isValidNumericNumber(number))
        throw LauncherException("Invalid numeric variable number: " + decimalText(number));
    return runContext().numericVariables[number - 1];
}

}  // namespace

bool VariableTable::isValidStringNumber(std::int32_t number) noexcept {
    return number >= 1 && number <= std::ssize(runContext().stringVariables);
}

bool VariableTable::isValidNumericNumber(std::int32_t number) noexcept {
    return number >= 1 && number <= std::ssize(runContext().numericVariables);
}

String VariableTable::stringValue(std::int32_t number) const {
    return withoutMarks(stringVariable(number));
}

String VariableTable::markedValue(std::int32_t number) const {
    return stringVariable(number);
}

void VariableTable::setPathValue(std::int32_t number, const String& path) {
    stringVariable(number) = literal(path);
}

void VariableTable::setStringValue(std::int32_t number, const String& text) {
    stringVariable(number) = text;
}

std::int32_t VariableTable::numericValue(std::int32_t number) const {
    return numericVariable(number);
}

void VariableTable::setNumericValue(std::int32_t number, std::int32_t value) {
    numericVariable(number) = value;
}

}  // namespace corvane
