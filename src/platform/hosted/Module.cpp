// The running program and the system it runs on.
#include "platform/hosted/Module.h"

#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>

#include "platform/Platform.h"
#include "platform/hosted/Environment.h"
#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/Paths.h"

namespace corvane::hosted {

std::string modulePath() {
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    return length < 0 ? "" : std::string(path, static_cast<std::size_t>(length));
}

}  // namespace corvane::hosted

namespace corvane {

// The host has one code page, for the console, too.
SystemFacts systemFacts() {
    utsname host{};
    uname(&host);
    std::string locale = hosted::environmentLocale();
    locale.erase(std::min(locale.find('.'), locale.size()));
    std::replace(locale.begin(), locale.end(), '_', '-');
    SystemFacts facts{{}, {}, 65001, 65001};
    std::snprintf(facts.system, sizeof facts.system, "%s %s", host.sysname, host.release);
    std::snprintf(facts.locale, sizeof facts.locale, "%s", locale.c_str());
    return facts;
}

}  // namespace corvane

using namespace corvane::hosted;

// The text is cut to the buffer, and the result says so by being the buffer's size.
DWORD GetModuleFileNameA(HMODULE /*module*/, LPSTR buffer, DWORD size) {
    if (injectedFailure(__func__)) {
        return 0;
    }
    const std::string path = windowsPath(modulePath());
    if (size == 0) {
        return fail(ERROR_INSUFFICIENT_BUFFER), 0;
    }
    const std::size_t count = std::min<std::size_t>(path.size(), size - 1);
    std::memcpy(buffer, path.data(), count);
    buffer[count] = '\0';
    if (count < path.size()) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return size;
    }
    return static_cast<DWORD>(count);
}

HMODULE GetModuleHandleA(LPCSTR name) {
    if (injectedFailure(__func__)) {
        return nullptr;
    }
    if (name != nullptr) {
        fail(ERROR_MOD_NOT_FOUND);
        return nullptr;
    }
    // Never followed; it only has to differ from null.
    static char module;
    return reinterpret_cast<HMODULE>(&module);
}

// The fields of the longer record beyond the shorter one stay zero.
BOOL GetVersionExA(LPOSVERSIONINFOA version) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    const DWORD size = version->dwOSVersionInfoSize;
    if (size != sizeof(OSVERSIONINFOA) && size != sizeof(OSVERSIONINFOEXA)) {
        return fail(ERROR_INSUFFICIENT_BUFFER);
    }
    std::memset(static_cast<void*>(version), 0, size);
    version->dwOSVersionInfoSize = size;
    version->dwMajorVersion = 10;
    version->dwBuildNumber = 19045;
    version->dwPlatformId = VER_PLATFORM_WIN32_NT;
    return TRUE;
}
