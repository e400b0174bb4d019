// What Windows shows of a program: its icon, its version information, the title of its windows, and
// how it is started.
#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "packer/face/Icon.h"
#include "packer/face/Program.h"

namespace corvane::pack {

// What is empty stays as the bare launcher has it.
struct Face {
    Icon icon;
    std::filesystem::path iconFile;
    std::u16string product;
    std::u16string company;
    std::u16string version;
    std::array<std::uint16_t, 4> versionNumbers{};
    std::u16string description;
    std::u16string copyright;
    std::u16string title;
    std::string executionLevel;  // as an application manifest names it
    std::optional<Subsystem> subsystem;
    bool isSet = false;  // whether anything is
};

// The names of the settings: "ICON" and so on.
std::vector<std::string> faceKeys();

// Takes a setting, checked. The file of an icon is looked for in `folder`. Raises `PackError` with
// what is wrong with the value, for which the caller knows the place.
void setFace(Face& face, const std::string& key, const std::string& value,
             const std::filesystem::path& folder);

// A bare launcher of Windows with the face, to be known as `fileName`; any other program as it is.
// Raises `PackError` when the program is damaged or odd.
std::string withFace(std::string program, const Face& face, const std::string& fileName);

}  // namespace corvane::pack
