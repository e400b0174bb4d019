// `JvmProperty`: one line of a JVM file's JVM_PROPERTIES, a property and what its value must be.
#pragma once

#include <memory>

#include "foundation/ObjectArray.h"
#include "foundation/String.h"

namespace corvane {

struct JvmProperty {
    enum class Relation {
        equal,    // the very text, or, in front of "...", its beginning
        atLeast,  // the two bounds, in the order of versions (VersionOrder.h)
        atMost,
    };

    String name;
    String pattern;
    Relation relation = Relation::equal;

    // False for a bound that isn't a version: no value meets it.
    bool canBeMet() const;
    // What the value must be, as a user reads it: "17...", ">= 17".
    String wanted() const;
    // Whether a JVM may report this value. A value without a number meets no bound.
    bool accepts(const String& value) const;
};

class JvmPropertyList : public ListOf<JvmProperty> {};

// Divides a line at its first equals sign, which `<` or `>` directly in front of it makes a bound.
// Null without an equals sign.
std::unique_ptr<JvmProperty> parseProperty(const String& line);

}  // namespace corvane
