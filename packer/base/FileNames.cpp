// Names that a file may have on every system.
#include "packer/base/FileNames.h"

#include <algorithm>
#include <string_view>

namespace corvane::pack {

namespace {

constexpr std::string_view devices[] = {"con",  "prn",  "aux",  "nul",  "conin$", "conout$",
                                        "com1", "com2", "com3", "com4", "com5",   "com6",
                                        "com7", "com8", "com9", "lpt1", "lpt2",   "lpt3",
                                        "lpt4", "lpt5", "lpt6", "lpt7", "lpt8",   "lpt9"};

constexpr std::size_t longest = 255;

// A device is meant whatever extension stands behind its name.
bool namesDevice(const std::string& name) {
    std::string stem = foldedName(name.substr(0, name.find('.')));
    stem.erase(stem.find_last_not_of(' ') + 1);
    return std::ranges::find(devices, stem) != std::end(devices);
}

}  // namespace

std::string foldedName(std::string name) {
    std::ranges::transform(name, name.begin(), [](char character) {
        const bool upper = character >= 'A' && character <= 'Z';
        return upper ? static_cast<char>(character - 'A' + 'a') : character;
    });
    return name;
}

std::string fileNameFault(const std::string& name) {
    if (name.empty())
        return "it is empty";
    if (name == "." || name == "..")
        return "it stands for a folder";
    if (name.find_first_of("/\\") != std::string::npos)
        return "it holds a separator";
    const bool control = std::ranges::any_of(
        name, [](char character) { return static_cast<unsigned char>(character) < ' '; });
    if (control || name.find_first_of(":*?\"<>|") != std::string::npos)
        return "it holds a character that Windows takes in no name";
    if (name.ends_with('.') || name.ends_with(' '))
        return "Windows drops the dot or blank at its end";
    if (namesDevice(name))
        return "on Windows it names a device";
    return name.size() > longest ? "it is too long" : "";
}

}  // namespace corvane::pack
