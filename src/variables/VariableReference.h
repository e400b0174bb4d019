// `VariableReference`: the name of a variable, such as N1 or s10, read from a text.
#pragma once

#include <cstdint>

#include "foundation/String.h"

namespace corvane {

struct VariableReference {
    char type;  // 'N' or 'S'
    std::int32_t number;
};

// Reads a reference; a blank in front of the digits and anything behind them passes. `context`
// opens the message of the `LauncherException` that anything else raises.
void resolveReference(VariableReference& reference, const String& text, const char* context);

// Stores `value`; for an N variable it must be a number, else a `LauncherException`.
void assignValue(const VariableReference& reference, const String& value, const char* context);

// The variable's value as text, marked where it holds no reference (LiteralText.h).
String valueText(const VariableReference& reference);

}  // namespace corvane
