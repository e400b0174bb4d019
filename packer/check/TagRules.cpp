// Rules for the tags of any file.
#include "packer/check/TagRules.h"

#include <algorithm>

#include "foundation/TextLines.h"
#include "packer/check/KnownTags.h"
#include "packer/project/PlacedTags.h"

namespace corvane::pack {

namespace {

// A file with what stands in it, and where findings go.
void checkForm(const CheckedFile& file, const KnownTag& known, Findings& findings) {
    const std::string name = known.name;
    const std::string value{file.tags.value(known.name, 0).view()};
    std::int16_t number = 0;
    if (known.form != TagForm::many && file.tags.valueCount(known.name) > 1)
        findings.error("surplus-value", file.place(name, 1),
                       "only the first value of " + name + " counts", "leave out the others");
    else if (known.form == TagForm::flag && !value.empty() && !scanNumber(value.c_str(), number))
        findings.error("not-a-number", file.place(name),
                       name + " is " + value + ", which is no number and so counts as left out",
                       "write " + name + ": 1 for yes, 0 for no");
}

// A template may name any tag of a JVM file.
bool isNamed(const CheckedProject& project, const std::string& tag) {
    for (const CheckedFile* const script : project.all(FileType::launchScript)) {
        for (const TagRecord& record : script->tags.records()) {
            for (const String& value : record.values) {
                if (value.find(("@" + tag + "@").c_str()) != String::npos ||
                    value.find(("\"" + tag + "\"").c_str()) != String::npos)
                    return true;
            }
        }
    }
    return false;
}

void checkNames(const CheckedProject& project, const CheckedFile& file,
                std::span<const KnownTag> known, Findings& findings) {
    std::vector<std::string> names;
    for (const KnownTag& tag : known)
        names.emplace_back(tag.name);
    for (const TagRecord& record : file.tags.records()) {
        const std::string name{record.name.view()};
        const bool read = name == noteTag || std::ranges::find(names, name) != names.end() ||
                          (file.type == FileType::jvmFile && isNamed(project, name));
        if (!read)
            findings.error("unknown-tag", file.tags.placeOfTag(name),
                           "nobody reads the tag " + name, didYouMean(name, names));
    }
}

}  // namespace

void checkTags(const CheckedProject& project, Findings& findings) {
    for (const CheckedFile& file : project.files) {
        if (!isTagFile(file.type) || file.path.empty())
            continue;
        checkNames(project, file, knownTags(file.type), findings);
        for (const KnownTag& tag : knownTags(file.type))
            checkForm(file, tag, findings);
    }
}

}  // namespace corvane::pack
