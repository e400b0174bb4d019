// Reading of platform hints.
#include "jvmsearch/PlatformHint.h"

#include <algorithm>
#include <memory>

#include "base/Log.h"
#include "base/Messages.h"
#include "foundation/Exceptions.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

constexpr DWORD nameSize = 1024;  // of a key: 255 characters, each of up to three bytes

// The parts of a hint.
struct HintParts {
    String hive;
    String keyPath;
    String valueName;
    String behindHive;  // key path and value name together
};

HintParts splitHint(const String& hint) {
    const std::size_t start = *hint.charAt(0) == '\\' ? 1 : 0;
    const std::size_t first = hint.find('\\', start);
    if (first == String::npos)
        return {};
    const std::size_t last = hint.rfind('\\');
    HintParts parts;
    parts.hive = hint.substr(start, first - start);
    parts.valueName = hint.substr(last + 1);
    parts.behindHive = hint.substr(first + 1);
    parts.keyPath = first == last ? parts.behindHive : hint.substr(first + 1, last - first - 1);
    return parts;
}

HKEY findHive(const String& name, const String& hint) {
    for (const Hive& hive : hives) {
        if (name == hive.name)
            return hive.key;
    }
    throw LauncherException(formatMessage(MessageId::invalidHive, name, hint));
}

// The bytes of a value as a NUL-terminated text, whatever its type, within the size that the
// registry reported. Gives the system's code.
LSTATUS readText(HKEY key, const String& valueName, String& text) {
    DWORD size = 0;
    LSTATUS code = RegQueryValueExA(key, valueName.cstr(), nullptr, nullptr, nullptr, &size);
    if (code != ERROR_SUCCESS || size == 0)
        return code;
    const auto bytes = std::make_unique<BYTE[]>(size + 1);
    code = RegQueryValueExA(key, valueName.cstr(), nullptr, nullptr, bytes.get(), &size);
    if (code == ERROR_SUCCESS)
        text = reinterpret_cast<const char*>(bytes.get());
    return code;
}

bool isMissing(LSTATUS code) noexcept {
    return code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND;
}

// Reads a value of a key. `opened` tells whether the key was there.
LSTATUS readValue(HKEY hive, const String& keyPath, const String& valueName, String& text,
                  bool& opened) {
    KeyGuard key;
    const LSTATUS code = RegOpenKeyExA(hive, keyPath.cstr(), 0, KEY_READ, key.put());
    opened = code == ERROR_SUCCESS;
    return opened ? readText(key.get(), valueName, text) : code;
}

}  // namespace

const Hive hives[5] = {
    {"HKEY_LOCAL_MACHINE", HKEY_LOCAL_MACHINE},
    {"HKEY_CURRENT_USER", HKEY_CURRENT_USER},
    {"HKEY_USERS", HKEY_USERS},
    {"HKEY_CLASSES_ROOT", HKEY_CLASSES_ROOT},
    {"HKEY_CURRENT_CONFIG", HKEY_CURRENT_CONFIG},
};

String hiveOf(const String& text) {
    return splitHint(text).hive;
}

void resolvePlatformHint(const String& hint, StringList& paths, bool guessed) {
    paths.clear();
    if (hint.empty())
        return;
    const HintParts parts = splitHint(hint);
    const HKEY hive = findHive(parts.hive, hint);
    String text;
    bool opened = false;
    LSTATUS code = readValue(hive, parts.keyPath, parts.valueName, text, opened);
    // The last part may name a subkey, whose default value is meant.
    if (opened && code != ERROR_SUCCESS)
        code = readValue(hive, parts.behindHive, String(), text, opened);
    if (guessed && isMissing(code))
        return;
    if (code != ERROR_SUCCESS)
        logMessage(formatMessage(MessageId::invalidPlatformHint,
                                 systemErrorText(static_cast<std::uint32_t>(code), hint)),
                   LogLevel::warning);
    else if (!text.empty())
        paths.add(text);
}

void KeyTree::list(const String& place, StringList& names) const {
    const RegistryPlace parent = parseRegistryPlace(place);
    KeyGuard key;
    if (RegOpenKeyExA(parent.hive, parent.keyPath.cstr(), 0, KEY_READ, key.put()) != ERROR_SUCCESS)
        return;
    char name[nameSize];
    for (DWORD i = 0;; ++i) {
        DWORD length = nameSize;
        if (RegEnumKeyExA(key.get(), i, name, &length, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS)
            return;
        names.add(name);
    }
}

bool isGuess(const String& hint) {
    return hint.find(wildcard) < std::min(hint.rfind('\\'), hint.length());
}

void expandPlatformHint(const String& hint, KeyTree& keys, StringList& hints) {
    findHive(splitHint(hint).hive, hint);
    const std::size_t last = hint.rfind('\\');
    StringList places;
    keys.expand(String(), hint.substr(0, last), places);
    for (const String& place : places)
        hints.add(place + hint.substr(last));
}

RegistryPlace parseRegistryPlace(const String& text) {
    const HintParts parts = splitHint(text);
    return {findHive(parts.hive, text), parts.keyPath, parts.valueName};
}

String readRegistryText(const RegistryPlace& place) {
    String text;
    bool opened = false;
    readValue(place.hive, place.keyPath, place.valueName, text, opened);
    return text;
}

void listPlatformJvmPaths(StringList& paths) {
    paths.clear();
    const auto add = [&](const char* path) { paths.add(path); };
    forEachPlatformJvmPath(add);
}

}  // namespace corvane
