// Names of variables.
#include "variables/VariableReference.h"

#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"
#include "variables/VariableTable.h"

namespace corvane {

namespace {

char upper(char character) noexcept {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                                : character;
}

[[noreturn]] void fail(const char* context, const String& words) {
    throw LauncherException(String(context) + " " + words);
}

}  // namespace

void resolveReference(VariableReference& reference, const String& text, const char* context) {
    if (text.length() < 2)
        fail(context, "Variable references must be at least 2 characters (e.g. N1 and S10).");
    reference.type = upper(text.at(0));
    if (reference.type != 'N' && reference.type != 'S')
        fail(context, "Invalid variable reference (" + text +
                          "). Must use N or S as the variable type, e.g. N2 or S1.");
    const String digits = text.substr(1);
    const auto isValid = reference.type == 'N' ? VariableTable::isValidNumericNumber
                                               : VariableTable::isValidStringNumber;
    if (!scanNumber(digits, reference.number) || !isValid(reference.number))
        fail(context, "Variable number is invalid (" + digits + ")");
}

void assignValue(const VariableReference& reference, const String& value, const char* context) {
    if (reference.type == 'S') {
        VariableTable().setStringValue(reference.number, value);
        return;
    }
    std::int32_t number = 0;
    if (!scanNumber(value, number))
        fail(context, "Invalid numeric expression in " + value);
    VariableTable().setNumericValue(reference.number, number);
}

String valueText(const VariableReference& reference) {
    const VariableTable variables;
    return reference.type == 'N' ? decimalText(variables.numericValue(reference.number))
                                 : variables.markedValue(reference.number);
}

}  // namespace corvane
