// The lines of JVM_PROPERTIES, and the values that they accept.
#include "jvmfile/JvmProperty.h"

#include "foundation/TextLines.h"
#include "foundation/VersionOrder.h"

namespace corvane {

namespace {

using Relation = JvmProperty::Relation;

bool hasNumber(const String& text) {
    return text.findFirstOf("0123456789") != String::npos;
}

bool matchesPattern(const String& value, const String& pattern) {
    const std::size_t dots = endsWith(pattern, "...");
    return dots == String::npos ? value == pattern
                                : value.view().starts_with({pattern.cstr(), dots});
}

// By the character in front of the equals sign.
Relation relationOf(char sign) {
    return sign == '>' ? Relation::atLeast : sign == '<' ? Relation::atMost : Relation::equal;
}

}  // namespace

bool JvmProperty::canBeMet() const {
    return relation == Relation::equal || hasNumber(pattern);
}

String JvmProperty::wanted() const {
    const char* const sign = relation == Relation::atLeast  ? ">= "
                             : relation == Relation::atMost ? "<= "
                                                            : "";
    return sign + pattern;
}

bool JvmProperty::accepts(const String& value) const {
    if (relation == Relation::equal)
        return matchesPattern(value, pattern);
    if (!canBeMet() || !hasNumber(value))
        return false;
    const int order = compareVersions(value.view(), pattern.view());
    return relation == Relation::atLeast ? order >= 0 : order <= 0;
}

std::unique_ptr<JvmProperty> parseProperty(const String& line) {
    const std::size_t equals = line.find('=');
    if (equals == String::npos)
        return nullptr;
    auto property = std::make_unique<JvmProperty>();
    property->relation = equals == 0 ? Relation::equal : relationOf(line.at(equals - 1));
    const std::size_t signs = property->relation == Relation::equal ? 0 : 1;
    property->name = line.substr(0, equals - signs);
    property->pattern = line.substr(equals + 1);
    trim(property->name);
    trim(property->pattern);
    return property;
}

}  // namespace corvane
