// The settings of a face, and what each changes in the program.
#include "packer/face/Face.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <utility>

#include "packer/base/Errors.h"
#include "packer/base/Paths.h"
#include "packer/face/Bytes.h"
#include "packer/face/Version.h"

namespace corvane::pack {

namespace {

namespace fs = std::filesystem;

// The launcher's dialogs show this group.
constexpr std::uint16_t dialogIcon = 102;
// The text that the launcher's windows have as their caption. Texts stand in blocks of sixteen.
constexpr std::uint16_t titleText = 105;
constexpr std::uint16_t textsOfBlock = 16;
// The launcher reads its title into a buffer of 512 bytes of UTF-8.
constexpr std::size_t longestText = 160;

// A path knows how each system's texts become UTF-16.
std::u16string wideText(const std::string& text) {
    try {
        return pathOf(text).u16string();
    } catch (const std::exception&) {
        throw PackError("the text is no UTF-8: " + text);
    }
}

std::u16string shownText(const std::string& text) {
    std::u16string wide = wideText(text);
    if (wide.empty() || wide.size() > longestText)
        throw PackError("a text of 1 to " + std::to_string(longestText) + " characters is needed");
    if (std::any_of(wide.begin(), wide.end(), [](char16_t unit) { return unit < u' '; }))
        throw PackError("a control character in the text");
    return wide;
}

// The value that goes with one of the words.
template <class Value, std::size_t count>
Value choiceOf(const std::string& word, const std::pair<const char*, Value> (&choices)[count]) {
    std::string known;
    for (const auto& [name, value] : choices) {
        if (word == name)
            return value;
        known += (known.empty() ? "" : ", ") + std::string(name);
    }
    throw PackError("unknown value " + word + "; known are " + known);
}

void setIconFile(Face& face, const std::string& value, const fs::path& folder) {
    const fs::path path = face.iconFile = folder / pathOf(value);
    std::ifstream file(path, std::ios::binary);
    if (!file || !fs::is_regular_file(path))
        throw PackError("there is no file " + path.string());
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    try {
        face.icon = readIcon(bytes);
    } catch (const PackError& failure) {
        throw PackError(path.string() + ": " + failure.what());
    }
}

void setVersion(Face& face, const std::string& value, const fs::path& /*folder*/) {
    face.versionNumbers = versionNumbers(value);
    face.version = shownText(value);
}

void setElevation(Face& face, const std::string& value, const fs::path& /*folder*/) {
    face.executionLevel = choiceOf<const char*>(value, {{"none", "asInvoker"},
                                                        {"admin", "requireAdministrator"},
                                                        {"highest", "highestAvailable"}});
}

void setSubsystem(Face& face, const std::string& value, const fs::path& /*folder*/) {
    face.subsystem = choiceOf<Subsystem>(
        value, {{"console", Subsystem::console}, {"windows", Subsystem::windows}});
}

template <std::u16string Face::*text>
void setText(Face& face, const std::string& value, const fs::path& /*folder*/) {
    face.*text = shownText(value);
}

struct Setting {
    const char* key;
    void (*set)(Face& face, const std::string& value, const fs::path& folder);
};

constexpr Setting settings[] = {
    {"ICON", setIconFile},
    {"PRODUCT", setText<&Face::product>},
    {"COMPANY", setText<&Face::company>},
    {"VERSION", setVersion},
    {"DESCRIPTION", setText<&Face::description>},
    {"COPYRIGHT", setText<&Face::copyright>},
    {"TITLE", setText<&Face::title>},
    {"ELEVATION", setElevation},
    {"SUBSYSTEM", setSubsystem},
};

// What the author leaves unsaid is not said: the launcher's own makers aren't his.
VersionInfo versionInfo(const Face& face, const std::string& fileName) {
    const std::u16string& name = face.title.empty() ? face.product : face.title;
    VersionInfo info{face.versionNumbers,
                     {{u"CompanyName", face.company},
                      {u"FileDescription", face.description.empty() ? name : face.description},
                      {u"FileVersion", face.version},
                      {u"LegalCopyright", face.copyright},
                      {u"OriginalFilename", wideText(fileName)},
                      {u"ProductName", face.product.empty() ? face.title : face.product},
                      {u"ProductVersion", face.version}}};
    std::erase_if(info.texts, [](const auto& text) { return text.second.empty(); });
    return info;
}

// In the place of the version in whatever languages the program has it in.
void replaceVersion(Resources& resources, const VersionInfo& info) {
    constexpr std::uint16_t onlyVersion = 1;
    const std::string bytes = writeVersion(info);
    bool found = false;
    for (auto& [key, data] : resources) {
        if (key.type == ResourceName(resourcetype::version)) {
            data = bytes;
            found = true;
        }
    }
    if (!found)
        resources.insert({{resourcetype::version, onlyVersion, 0}, bytes});
}

// A block of texts, each behind its length, with another one in the place of the title.
std::string withTitle(std::string_view block, const std::u16string& title) {
    std::size_t position = 0;
    for (int i = 0; i < titleText % textsOfBlock; ++i)
        position += 2 + 2 * numberAt(block, position, 2);
    const std::size_t end = position + 2 + 2 * numberAt(block, position, 2);
    std::string result(partOf(block, 0, position));
    appendNumber(result, static_cast<std::uint32_t>(title.size()), 2);
    appendText(result, title);
    return result.append(partOf(block, end, block.size() - std::min(end, block.size())));
}

void replaceTitle(Resources& resources, const std::u16string& title) {
    constexpr std::uint16_t block = titleText / textsOfBlock + 1;
    bool found = false;
    for (auto& [key, data] : resources) {
        if (key.type == ResourceName(resourcetype::textBlock) && key.name == ResourceName(block)) {
            data = withTitle(data, title);
            found = true;
        }
    }
    if (!found)
        throw PackError("this program has no title that another could replace");
}

// In the application manifest's element that names it.
void replaceExecutionLevel(std::string& manifest, const std::string& level) {
    constexpr std::string_view attribute = "level=\"";
    const std::size_t element = manifest.find("<requestedExecutionLevel");
    const std::size_t elementEnd = manifest.find('>', element);
    const std::size_t name = manifest.find(attribute, element);
    const std::size_t end = manifest.find('"', name + attribute.size());
    if (element == std::string::npos || name == std::string::npos || end > elementEnd)
        throw PackError("this program's application manifest says nothing of rights");
    const std::size_t start = name + attribute.size();
    manifest.replace(start, end - start, level);
}

void replaceExecutionLevels(Resources& resources, const std::string& level) {
    bool found = false;
    for (auto& [key, data] : resources) {
        if (key.type == ResourceName(resourcetype::manifest)) {
            replaceExecutionLevel(data, level);
            found = true;
        }
    }
    if (!found)
        throw PackError("this program has no application manifest");
}

void changeResources(Resources& resources, const Face& face, const std::string& fileName) {
    if (!face.icon.empty())
        setIcon(resources, face.icon, dialogIcon);
    const auto given = {&face.product,     &face.company,   &face.version,
                        &face.description, &face.copyright, &face.title};
    if (std::any_of(given.begin(), given.end(), [](const auto* text) { return !text->empty(); }))
        replaceVersion(resources, versionInfo(face, fileName));
    if (!face.title.empty())
        replaceTitle(resources, face.title);
    if (!face.executionLevel.empty())
        replaceExecutionLevels(resources, face.executionLevel);
}

}  // namespace

std::vector<std::string> faceKeys() {
    std::vector<std::string> keys;
    std::transform(std::begin(settings), std::end(settings), std::back_inserter(keys),
                   [](const Setting& setting) { return setting.key; });
    return keys;
}

void setFace(Face& face, const std::string& key, const std::string& value, const fs::path& folder) {
    const auto* const setting =
        std::find_if(std::begin(settings), std::end(settings),
                     [&](const Setting& candidate) { return key == candidate.key; });
    if (setting == std::end(settings))
        throw PackError("unknown tag " + key);
    setting->set(face, value, folder);
    face.isSet = true;
}

std::string withFace(std::string program, const Face& face, const std::string& fileName) {
    if (!face.isSet || !isWindowsProgram(program))
        return program;
    Program changed(std::move(program));
    Resources resources = changed.resources();
    changeResources(resources, face, fileName);
    changed.setResources(resources);
    if (face.subsystem)
        changed.setSubsystem(*face.subsystem);
    return changed.bytes();
}

}  // namespace corvane::pack
