// The registry over a file: the one that the environment variable CORVANE_REGISTRY names, else one
// among the user's own states. It is read anew for each key that is opened, so that a test may
// change it, and replaced as a whole for each value that is set.
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "platform/hosted/Errors.h"
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
    {HKEY_CLASSES_ROOT, "HKEY_CLASSES_ROOT"},     {HKEY_CURRENT_USER, "HKEY_CURRENT_USER"},
    {HKEY_LOCAL_MACHINE, "HKEY_LOCAL_MACHINE"},   {HKEY_USERS, "HKEY_USERS"},
    {HKEY_CURRENT_CONFIG, "HKEY_CURRENT_CONFIG"},
};

// A key as it was when it was opened.
struct OpenKey {
    std::string path;
    RegistryKey values;
    std::vector<std::string> subkeys;
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

// Value of a variable, empty if it isn't set.
std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

// Where the user's programs keep what they remember; empty for a user without a home.
std::string stateDirectory() {
    const std::string state = variable("XDG_STATE_HOME");
    const std::string home = variable("HOME");
    return state.starts_with('/') ? state : home.empty() ? "" : home + "/.local/state";
}

// The host path of the file; empty for none.
std::string registryFile() {
    const std::string name = variable("CORVANE_REGISTRY");
    const std::string state = stateDirectory();
    if (!name.empty()) {
        return hostPath(name.c_str()).value_or("");
    }
    return state.empty() ? "" : state + "/corvane/registry.reg";
}

// No file, or one that can't be read, is an empty registry.
RegistryTree readTree() {
    const auto text = readHostFile(registryFile());
    return text ? parseRegistry(*text) : RegistryTree();
}

bool writeFile(const std::string& path, const std::string& text) {
    const Descriptor file = openHostFile(path, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    return file && write(file.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

// Sets a value in the file. Whoever else writes waits; whoever reads finds the former file or the
// new one.
LSTATUS setInFile(const std::string& key, const std::string& name, const std::string& value) {
    const std::filesystem::path path = registryFile();
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    const Descriptor lock(open(path.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!lock || flock(lock.get(), LOCK_EX) != 0) {
        return code(windowsCode(errno));
    }
    const auto former = readHostFile(path);
    if (!former && errno != ENOENT) {
        return code(windowsCode(errno));
    }
    const std::string text = withRegistryText(former.value_or(""), key, name, value);
    const std::string fresh = path.string() + ".new";
    if (!writeFile(fresh, text) || rename(fresh.c_str(), path.c_str()) != 0) {
        const DWORD reason = windowsCode(errno);
        unlink(fresh.c_str());
        return code(reason);
    }
    return ERROR_SUCCESS;
}

HKEY addOpenKey(OpenKey key) {
    OpenKeys& table = openKeys();
    const HKEY handle = reinterpret_cast<HKEY>(table.last += 4);
    table.keys.emplace(handle, std::move(key));
    return handle;
}

// The path of a subkey.
std::string joined(const std::string& parent, LPCSTR path) {
    std::string full = parent + "\\" + (path == nullptr ? "" : path);
    while (full.ends_with('\\')) {
        full.pop_back();
    }
    return full;
}

// The names below a key.
std::vector<std::string> subkeysOf(const RegistryTree& tree, const std::string& path) {
    std::vector<std::string> names;
    const std::size_t start = path.size() + 1;
    const std::string front = registryName(path + '\\');
    for (auto key = tree.upper_bound(front);
         key != tree.end() && registryName(key->first).starts_with(front); ++key) {
        if (key->first.find('\\', start) == std::string::npos) {
            names.push_back(key->first.substr(start));
        }
    }
    return names;
}

// Fills in where a key is, not what it holds.
LSTATUS locate(HKEY parent, LPCSTR path, OpenKey& key) {
    const OpenKey* const open = findOpenKey(parent);
    const char* const hive = hivePath(parent);
    if (open == nullptr && hive == nullptr) {
        return code(ERROR_INVALID_HANDLE);
    }
    // Paths are relative to their key.
    if (path != nullptr && *path == '\\') {
        return code(ERROR_BAD_PATHNAME);
    }
    key.path = joined(open != nullptr ? open->path : hive, path);
    return ERROR_SUCCESS;
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
    OpenKey opened;
    if (const LSTATUS failure = locate(parent, path, opened); failure != ERROR_SUCCESS) {
        return failure;
    }
    RegistryTree tree = readTree();
    const auto found = tree.find(opened.path);
    // A hive is there even if the file says nothing of it.
    if (found == tree.end() && opened.path.find('\\') != std::string::npos) {
        return code(ERROR_FILE_NOT_FOUND);
    }
    // The key keeps its values; what becomes of the file then is not seen.
    if (found != tree.end()) {
        opened.values = std::move(found->second);
    }
    opened.subkeys = subkeysOf(tree, opened.path);
    *key = addOpenKey(std::move(opened));
    return ERROR_SUCCESS;
}

LSTATUS RegEnumKeyExA(HKEY key, DWORD index, LPSTR name, LPDWORD length, LPDWORD /*reserved*/,
                      LPSTR keyClass, LPDWORD /*classLength*/, PFILETIME written) {
    if (injectedFailure(__func__)) {
        return code(GetLastError());
    }
    const OpenKey* const open = findOpenKey(key);
    if (open == nullptr) {
        return code(ERROR_INVALID_HANDLE);
    }
    if (keyClass != nullptr || written != nullptr) {
        return code(ERROR_INVALID_PARAMETER);
    }
    if (index >= open->subkeys.size()) {
        return code(ERROR_NO_MORE_ITEMS);
    }
    const std::string& subkey = open->subkeys[index];
    if (*length <= subkey.size()) {
        return code(ERROR_MORE_DATA);
    }
    std::memcpy(name, subkey.c_str(), subkey.size() + 1);
    *length = static_cast<DWORD>(subkey.size());
    return ERROR_SUCCESS;
}

LSTATUS RegCreateKeyExA(HKEY parent, LPCSTR path, DWORD /*reserved*/, LPSTR /*keyClass*/,
                        DWORD options, REGSAM /*access*/, LPSECURITY_ATTRIBUTES /*security*/,
                        PHKEY key, LPDWORD disposition) {
    if (injectedFailure(__func__)) {
        return code(GetLastError());
    }
    if (options != REG_OPTION_NON_VOLATILE || disposition != nullptr) {
        return code(ERROR_INVALID_PARAMETER);
    }
    OpenKey opened;
    if (const LSTATUS failure = locate(parent, path, opened); failure != ERROR_SUCCESS) {
        return failure;
    }
    *key = addOpenKey(std::move(opened));
    return ERROR_SUCCESS;
}

LSTATUS RegSetValueExA(HKEY key, LPCSTR name, DWORD /*reserved*/, DWORD type, const BYTE* data,
                       DWORD size) {
    if (injectedFailure(__func__)) {
        return code(GetLastError());
    }
    const OpenKey* open = findOpenKey(key);
    if (open == nullptr) {
        return code(ERROR_INVALID_HANDLE);
    }
    if (type != REG_SZ || size == 0 || data[size - 1] != 0) {
        return code(ERROR_INVALID_PARAMETER);
    }
    return setInFile(open->path, name == nullptr ? "" : name, reinterpret_cast<const char*>(data));
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
