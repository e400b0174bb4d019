// The text form of the registry: the files that registry editors export.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/hosted/WindowsTypes.h"

namespace corvane::hosted {

struct RegistryValue {
    DWORD type;
    std::string data;  // texts with their terminators
};

// Values by their names in lower case; the default value has the empty name.
using RegistryKey = std::map<std::string, RegistryValue>;

// Lower case of the ASCII letters, the form in which names compare.
std::string registryName(std::string name);

struct RegistryNameLess {
    bool operator()(const std::string& a, const std::string& b) const {
        return registryName(a) < registryName(b);
    }
};

// Keys by their full paths as the file spells them first, without a trailing backslash; the keys
// above a key of the file are there too.
using RegistryTree = std::map<std::string, RegistryKey, RegistryNameLess>;

// Reads a text with the header REGEDIT4 or "Windows Registry Editor Version 5.00", in UTF-8 or
// UTF-16 with a byte order mark. In the latter version the texts among the hex values are UTF-16;
// they become UTF-8. What can't be read is skipped, as are the keys and values to be removed.
RegistryTree parseRegistry(const std::string& text);

// The text with a value of a key set to a text, in UTF-8; all else stays as it stands.
std::string withRegistryText(const std::string& file, const std::string& key,
                             const std::string& name, const std::string& value);

}  // namespace corvane::hosted
