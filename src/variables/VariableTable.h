// `VariableTable`: the fifteen variables of the instruction language, N1 to N5 and S1 to S10.
#pragma once

#include <cstdint>

#include "foundation/String.h"

namespace corvane {

// The variables in which the JVM commands and actions leave their results.
inline constexpr std::int32_t foundVariable = 1;          // N: 1 with a JVM to use, else 0
inline constexpr std::int32_t homeVariable = 1;           // S of FIND_JVM and VERIFY: its home
inline constexpr std::int32_t jvmFileVariable = 2;        // S of FIND_JVM: its resolved JVM file
inline constexpr std::int32_t installedFileVariable = 1;  // S of INSTALL_JVM: its `jvm` file

// A view of the values, which live in the `RunContext` for the whole run. A number that doesn't
// exist raises a `LauncherException`.
class VariableTable {
  public:
    static bool isValidStringNumber(std::int32_t number) noexcept;
    static bool isValidNumericNumber(std::int32_t number) noexcept;

    String stringValue(std::int32_t number) const;
    void setStringValue(std::int32_t number, const String& text);
    // The same for a path that a command found: no reference is seen in it later, whatever at signs
    // it holds.
    void setPathValue(std::int32_t number, const String& path);
    // The text as an expansion takes it in: what holds no reference is marked (LiteralText.h). It
    // may be set as it is.
    String markedValue(std::int32_t number) const;
    std::int32_t numericValue(std::int32_t number) const;
    void setNumericValue(std::int32_t number, std::int32_t value);
};

}  // namespace corvane
