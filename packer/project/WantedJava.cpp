// What a project's JVM files ask of Java.
#include "packer/project/WantedJava.h"

#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

#include "foundation/TextLines.h"
#include "jvmfile/JvmProperty.h"
#include "packer/project/Manifest.h"

namespace corvane::pack {

namespace {

struct Releases {
    std::set<std::int32_t> named;
    bool open = false;  // later ones, too
    bool sure = true;   // every JVM file names one
};

std::string contentOf(const ManifestEntry& file) {
    if (file.path.empty())
        return file.content;
    std::ostringstream content;
    content << std::ifstream(file.path, std::ios::binary).rdbuf();
    return content.str();
}

// Takes the release that a line asks for. False if it is about something else.
bool readRelease(const std::string& line, Releases& releases) {
    String trimmed = line.c_str();
    trim(trimmed);
    const std::unique_ptr<JvmProperty> property = parseProperty(trimmed);
    std::int32_t release = 0;
    if (!property || property->name != "corvane.java.feature" ||
        property->relation == JvmProperty::Relation::atMost ||
        !scanNumber(property->pattern, release))
        return false;
    releases.named.insert(release);
    releases.open |= property->relation == JvmProperty::Relation::atLeast;
    return true;
}

void readReleases(const ManifestEntry& file, Releases& releases) {
    std::istringstream lines(contentOf(file));
    bool found = false;
    for (std::string line; std::getline(lines, line);)
        found |= readRelease(line, releases);
    releases.sure &= found;
}

}  // namespace

std::string wantedJava(const Manifest& manifest) {
    Releases releases;
    for (const ManifestEntry& file : manifest.entries) {
        if (file.entry.type == FileType::jvmFile)
            readReleases(file, releases);
    }
    if (!releases.sure || releases.named.empty())
        return "Java";
    std::string text = "Java " + std::to_string(*releases.named.begin());
    if (releases.open)
        return text + " or later";
    for (auto release = std::next(releases.named.begin()); release != releases.named.end();
         ++release)
        text += " or " + std::to_string(*release);
    return text;
}

}  // namespace corvane::pack
