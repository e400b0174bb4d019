// Registry reads over the file that the environment variable CORVANE_REGISTRY names. The file is
// read anew for each key that is opened, so that a test may change it.
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>

#include "platform/hosted/Faults.h"
#include "platform/hosted/Handles.h"
#include "platform/hosted/Paths.h"
#include "platform/hosted/RegistryFile.h"
#include "platform/hosted/SystemOperations.h"

using namespace corvane::hosted;

namespace {

// These operations give their codes as signed numbers.
constexpr LSTATUS code(DWORD error) {
    return static_cast<LSTATUS>(error);
}

// The predefined keys and how the file names them.
const struct {
    HKEY key;
    const char* path;
} hives[] = {
    {HKEY_CLASSES_ROOT, "hkey_classes_root"},     {HKEY_CURRENT_USER, "hkey_current_user"},
    {HKEY_LOCAL_MACHINE, "hkey_local_machine"},   {HKEY_USERS, "hkey_users"},
    {HKEY_CURRENT_CONFIG, "hkey_current_config"},
};

// A key as it was when it was opened.
struct OpenKey {
    std::string path;
    RegistryKey values;
};

// Open keys by their handles, which are never used twice. Never destroyed: guards may close late.
struct OpenKeys {
    std::map<HKEY, OpenKey> keys;
    DWORD_PTR last = 0;
};

OpenKeys& openKeys() {
    static OpenKeys& table = *new OpenKeys;
    return table;
}

// Null for a key that isn't predefined.
const char* hivePath(HKEY key) {
    for (const auto& hive : hives) {
        if (hive.key == key) {
            return hive.path;
        }
    }
    return nullptr;
}

const OpenKey* findOpenKey(HKEY key) {
    const auto found = openKeys().keys.find(key);
    return found == openKeys().keys.end() ? nullptr : &found->second;
}

// No file, or one that can't be read, is an empty registry.
RegistryTree readTree() {
    const char* name = std::getenv("CORVANE_REGISTRY");
    const auto path = name == nullptr || *name == '\0' ? std::nullopt : hostPath(name);
    const auto text = path ? readHostFile(*path) : std::nullopt;
    return text ? parseRegistry(*text) : RegistryTree();
}

HKEY addOpenKey(OpenKey key) {
    OpenKeys& table = openKeys();
    const HKEY handle = reinterpret_cast<HKEY>(table.last += 4);
    table.keys.emplace(handle, std::move(key));
    return handle;
}

// The path of a subkey, in the form in which the tree has its keys.
std::string joined(const std::string& parent, LPCSTR path) {
    std::string full = parent + "\\" + registryName(path == nullptr ? "" : path);
    while (full.ends_with('\\')) {
        full.pop_back();
    }
    return full;
}

// A buffer that is too small gets nothing but the size that is needed.
LSTATUS giveValue(const RegistryValue& value, LPDWORD type, LPBYTE data, LPDWORD size) {
    const DWORD needed = static_cast<DWORD>(value.data.size());
    if (type != nullptr) {
        *type = value.type;
    }
    const bool fits = data == nullptr || *size >= needed;
    if (data != nullptr && fits) {
        std::memcpy(data, value.data.data(), needed);
    }
    if (size != nullptr) {
        *size = needed;
    }
    return fits ? ERROR_SUCCESS : code(ERROR_MORE_DATA);
}

}  // namespace

LSTATUS RegOpenKeyExA(HKEY parent, LPCSTR path, DWORD /*options*/, REGSAM /*access*/, PHKEY key) {
    if (injectedFailure(__func__)) {
        return code(GetLastError());
    }
    const OpenKey* open = findOpenKey(parent);
    const char* hive = hivePath(parent);
    if (open == nullptr && hive == nullptr) {
        return code(ERROR_INVALID_HANDLE);
    }
    // Paths are relative to their key.
    if (path != nullptr && *path == '\\') {
        return code(ERROR_BAD_PATHNAME);
    }
    const std::string full = joined(open != nullptr ? open->path : hive, path);
    RegistryTree tree = readTree();
    const auto found = tree.find(full);
    // A hive is there even if the file says nothing of it.
    if (found == tree.end() && full.find('\\') != std::string::npos) {
        return code(ERROR_FILE_NOT_FOUND);
    }
    // The key keeps its values; what becomes of the file then is not seen.
    *key = addOpenKey({full, found == tree.end() ? RegistryKey() : std::move(found->second)});
    return ERROR_SUCCESS;
}

LSTATUS RegQueryValueExA(HKEY key, LPCSTR name, LPDWORD /*reserved*/, LPDWORD type, LPBYTE data,
                         LPDWORD size) {
    if (injectedFailure(__func__)) {
        return code(GetLastError());
    }
    const OpenKey* open = findOpenKey(key);
    if (open == nullptr) {
        return code(ERROR_INVALID_HANDLE);
    }
    if (data != nullptr && size == nullptr) {
        return code(ERROR_INVALID_PARAMETER);
    }
    // No name and the empty name both mean the default value.
    const auto found = open->values.find(registryName(name == nullptr ? "" : name));
    return found == open->values.end() ? code(ERROR_FILE_NOT_FOUND)
                                       : giveValue(found->second, type, data, size);
}

LSTATUS RegCloseKey(HKEY key) {
    if (injectedFailure(__func__)) {
        return code(GetLastError());
    }
    const bool known = hivePath(key) != nullptr || openKeys().keys.erase(key) != 0;
    return known ? ERROR_SUCCESS : code(ERROR_INVALID_HANDLE);
}
