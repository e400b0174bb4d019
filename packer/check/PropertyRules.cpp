// Rules for the lines of JVM_PROPERTIES, which the launcher's own code reads and compares.
#include "packer/check/PropertyRules.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "jvmfile/JvmProperty.h"

namespace corvane::pack {

namespace {

constexpr const char* lineShape = "a line is name=pattern, name>=version or name<=version";

// What the verification class answers beside the properties of Java.
constexpr const char* ownProperties[] = {
    "corvane.java.feature", "corvane.java.atleast.17", "corvane.java.bits",
    "corvane.java.jdk",     "corvane.java.headless",   "corvane.java.class.NAME",
};
constexpr int highestFeature = 99;
constexpr std::string_view ownPrefix = "corvane.";
constexpr std::string_view atLeast = "corvane.java.atleast.";
constexpr std::string_view hasClass = "corvane.java.class.";

std::string standard(const String& text) {
    return std::string(text.view());
}

bool isNumber(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

bool isOwn(const std::string& name) {
    return (name.starts_with(atLeast) && isNumber(name.substr(atLeast.size()))) ||
           (name.starts_with(hasClass) && name.size() > hasClass.size()) ||
           std::find(std::begin(ownProperties), std::end(ownProperties), name) !=
               std::end(ownProperties);
}

// The values that a property may have, as far as they are known.
std::vector<std::string> valuesOf(const std::string& name) {
    if (name == "corvane.java.bits")
        return {"32", "64"};
    const bool yesOrNo = name.starts_with(atLeast) || name.starts_with(hasClass) ||
                         name == "corvane.java.jdk" || name == "corvane.java.headless";
    return yesOrNo ? std::vector<std::string>{"true", "false"} : std::vector<std::string>();
}

void checkName(const std::string& name, const Place& place, Findings& findings) {
    if (name.empty())
        findings.error("property-name", place, "no name stands in front of the =", lineShape);
    else if (name.find_first_of(" \t\"") != std::string::npos)
        findings.error("property-name", place, "the name of a property holds no blanks: " + name,
                       lineShape);
    else if (name.starts_with(ownPrefix) && !isOwn(name))
        findings.error("property-name", place, "no JVM reports " + name,
                       didYouMean(name, {std::begin(ownProperties), std::end(ownProperties)}));
}

// A pattern that says less or more than it seems to.
void checkPattern(const JvmProperty& property, const Place& place, Findings& findings) {
    const std::string pattern = standard(property.pattern);
    const std::size_t dots = pattern.find("...");
    if (pattern.find('*') != std::string::npos)
        findings.error("pattern", place, "a * in a pattern is a character like others: " + pattern,
                       "the beginning of a value is written 17...");
    else if (dots != std::string::npos && dots + 3 != pattern.size())
        findings.error("pattern", place,
                       "three dots stand for the rest of a value only at its end: " + pattern,
                       "write " + pattern.substr(0, dots + 3));
    else if (dots == std::string::npos && pattern.ends_with(".."))
        findings.error("pattern", place, "two dots are two dots: " + pattern,
                       "write " + pattern + ".");
}

// A pattern without the dots that stand for the rest: a value that it accepts.
std::string exampleOf(const JvmProperty& property) {
    const std::string pattern = standard(property.pattern);
    return pattern.ends_with("...") ? pattern.substr(0, pattern.size() - 3) : pattern;
}

// What a Java of the number `feature` may report, if that follows from the number.
std::optional<std::string> reported(const JvmProperty& property, int feature) {
    const std::string name = standard(property.name);
    const std::string number = std::to_string(feature);
    const std::string version = feature < 9 ? "1." + number : number;
    if (name == "corvane.java.feature")
        return number;
    if (name.starts_with(atLeast))
        return std::atoi(name.c_str() + atLeast.size()) <= feature ? "true" : "false";
    if (name == "java.specification.version" || name == "java.vm.specification.version")
        return version;
    if (name != "java.version")
        return std::nullopt;
    const std::string example = exampleOf(property);
    const bool same = example.starts_with(version) &&
                      !std::isdigit(static_cast<unsigned char>(example[version.size()]));
    return same ? example : version + ".0";
}

bool acceptsAny(const JvmProperty& property) {
    for (int feature = 1; feature <= highestFeature; ++feature) {
        if (property.accepts(std::to_string(feature).c_str()))
            return true;
    }
    return false;
}

void checkValue(const JvmProperty& property, const Place& place, Findings& findings) {
    const std::string name = standard(property.name);
    const std::vector<std::string> values = valuesOf(name);
    const auto accepted = [&](const std::string& value) { return property.accepts(value.c_str()); };
    if (!property.canBeMet())
        findings.error("impossible-property", place,
                       "a bound without a number is met by no JVM: " + standard(property.wanted()),
                       lineShape);
    else if (!values.empty() && std::none_of(values.begin(), values.end(), accepted))
        findings.error("impossible-property", place,
                       name + " is never " + standard(property.pattern),
                       "it is " + values[0] + " or " + values[1]);
    else if (name == "corvane.java.feature" && !acceptsAny(property))
        findings.error("impossible-property", place,
                       name + " is never " + standard(property.wanted()),
                       "it is one whole number: 8 for Java 1.8.0_392, 17 for 17.0.15");
}

// One line with its place.
struct PlacedProperty {
    std::unique_ptr<JvmProperty> property;
    Place place;
};

using PropertyLines = std::vector<PlacedProperty>;

// Lines are no alternatives.
void checkTogether(const PropertyLines& lines, Findings& findings) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            const JvmProperty& later = *lines[i].property;
            const JvmProperty& earlier = *lines[j].property;
            if (later.name == earlier.name && !later.accepts(exampleOf(earlier).c_str()) &&
                !earlier.accepts(exampleOf(later).c_str()))
                findings.error("contradicting-properties", lines[i].place,
                               "all lines must hold, and no JVM reports both " +
                                   standard(earlier.wanted()) + " and " + standard(later.wanted()),
                               "what may be either is two JVM files");
        }
    }
}

}  // namespace

void checkProperties(const CheckedFile& jvmFile, Findings& findings) {
    PropertyLines lines;
    std::size_t index = 0;
    for (const String& line : jvmFile.tags.values("JVM_PROPERTIES")) {
        const Place place = jvmFile.place("JVM_PROPERTIES", index++);
        std::unique_ptr<JvmProperty> property = parseProperty(line);
        if (property == nullptr) {
            findings.error("property-without-pattern", place,
                           "no = divides a property from its pattern: " + standard(line),
                           lineShape);
            continue;
        }
        checkName(standard(property->name), place, findings);
        checkPattern(*property, place, findings);
        checkValue(*property, place, findings);
        lines.push_back({std::move(property), place});
    }
    checkTogether(lines, findings);
}

bool mayAccept(const TagFile& jvmFile, int feature) {
    for (const String& line : jvmFile.values("JVM_PROPERTIES")) {
        const std::unique_ptr<JvmProperty> property = parseProperty(line);
        const std::optional<std::string> value =
            property ? reported(*property, feature) : std::nullopt;
        if (value && !property->accepts(value->c_str()))
            return false;
    }
    return true;
}

}  // namespace corvane::pack
