// Environment variables. Windows' names don't tell case apart while the host's do: a name is looked
// up as it is written, and if it isn't there, ignoring case.
#include "platform/hosted/Environment.h"

#include <strings.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <optional>
#include <set>

#include "platform/Platform.h"
#include "platform/hosted/ChildText.h"
#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/FileOperations.h"

namespace corvane::hosted {

namespace {

// Names that were set in this process, as the host's environment spells them.
std::set<std::string>& namesSet() {
    static auto& names = *new std::set<std::string>;
    return names;
}

// The name in an entry of the form NAME=value.
std::string nameOf(const char* entry) {
    const char* end = std::strchr(entry, '=');
    return end == nullptr ? entry : std::string(entry, end);
}

// The spelling under which a variable stands in the environment; none if it isn't set.
// As written first: the host tells http_proxy from HTTP_PROXY.
std::optional<std::string> spellingOf(const char* name) {
    if (std::getenv(name) != nullptr) {
        return name;
    }
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string spelling = nameOf(*entry);
        if (strcasecmp(spelling.c_str(), name) == 0) {
            return spelling;
        }
    }
    return std::nullopt;
}

}  // namespace

std::vector<std::string> childEnvironment() {
    std::vector<std::string> entries;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string name = nameOf(*entry);
        const bool ours = namesSet().contains(name);
        entries.push_back(ours ? name + "=" + childText(*entry + name.size() + 1) : *entry);
    }
    return entries;
}

std::string environmentValue(const char* name) {
    const auto spelling = spellingOf(name);
    return spelling ? std::getenv(spelling->c_str()) : "";
}

}  // namespace corvane::hosted

namespace corvane {

void divideBySemicolons(char* paths) {
    const char* start = paths;
    for (char* at = paths; *at != '\0'; ++at) {
        // X:\a and X:/a are paths with a drive.
        const char* const letter = start + (*start == '"' ? 1 : 0);
        const bool drive = at == letter + 1 && (at[1] == '\\' || at[1] == '/');
        if (*at == ':' && !drive) {
            *at = ';';
        }
        if (*at == ';') {
            start = at + 1;
        }
    }
}

}  // namespace corvane

using namespace corvane::hosted;

DWORD GetEnvironmentVariableA(LPCSTR name, LPSTR buffer, DWORD size) {
    if (injectedFailure(__func__)) {
        return 0;
    }
    const auto spelling = spellingOf(name);
    if (!spelling) {
        fail(ERROR_ENVVAR_NOT_FOUND);
        return 0;
    }
    return giveText(std::getenv(spelling->c_str()), buffer, size);
}

// The variable keeps the spelling that it has, as on Windows.
BOOL SetEnvironmentVariableA(LPCSTR name, LPCSTR value) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    const std::string spelling = spellingOf(name).value_or(name);
    // Also a removed name: its next value is the launcher's in any case.
    namesSet().insert(spelling);
    const int result =
        value == nullptr ? unsetenv(spelling.c_str()) : setenv(spelling.c_str(), value, 1);
    return result == 0 ? TRUE : failWithErrno();
}
