// The entry of the process.
#include "entry/LauncherMain.h"

#include <cstring>

#include "base/DebugLog.h"
#include "base/RunContext.h"
#include "driver/ArgumentVector.h"
#include "frontends/FrontEnds.h"
#include "host/Paths.h"
#include "launcherfile/LauncherKind.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

constexpr std::int32_t showNormally = 5;

// Clears `RunContext.ui` in front of the front end's end.
class UiScope {
  public:
    explicit UiScope(LauncherUI& ui) { runContext().ui = &ui; }
    UiScope(const UiScope&) = delete;
    UiScope& operator=(const UiScope&) = delete;
    ~UiScope() { runContext().ui = nullptr; }
};

// A path that doesn't fit the buffer leaves it empty, and no line is ever written.
void openDebugLog() {
    char path[260] = "";
    const DWORD length = GetEnvironmentVariableA("DBGWIN32PPK", path, sizeof path);
    if (length == 0)
        return;
    if (length < sizeof path)
        runContext().debugLogPath = path;
    runContext().debugLogEnabled = true;
    debugLogLine("Console Launcher Started");
}

bool wantsConsole(const ArgumentVector& arguments) {
    bool wanted = false;
    for (std::int32_t i = 1; i < arguments.count(); ++i)
        wanted = wanted || std::strcmp(arguments.at(i), "-console") == 0;
    return wanted;
}

Owned<LauncherUI> makeFrontEnd(const ArgumentVector& arguments) {
    if (runContext().isTool)
        return makeToolFrontEnd(arguments);
    if (!wantsConsole(arguments))
        return makeWindowedFrontEnd(arguments);
    joinConsole();
    return makeConsoleFrontEnd(arguments);
}

void runFrontEnd(std::int32_t& exitValue) {
    runContext().win9xFamily = detectWin9xFamily();
    openDebugLog();
    runContext().moduleHandle = GetModuleHandleA(nullptr);
    ArgumentVector arguments;
    arguments.build();
    runContext().isTool = isToolLauncher(modulePath().cstr());
    const Owned<LauncherUI> ui = makeFrontEnd(arguments);
    const UiScope scope(*ui);
    if (ui->init(runContext().moduleHandle, showNormally))
        exitValue = ui->run();
}

}  // namespace

std::int32_t launcherMain() {
    std::int32_t exitValue = -1;
    try {
        runFrontEnd(exitValue);
    } catch (...) {
        // Whatever comes this far has no words for the user.
    }
    return exitValue;
}

bool detectWin9xFamily() {
    OSVERSIONINFOEXA version{};
    auto* const record = reinterpret_cast<OSVERSIONINFOA*>(&version);
    record->dwOSVersionInfoSize = sizeof version;
    if (!GetVersionExA(record)) {
        record->dwOSVersionInfoSize = sizeof(OSVERSIONINFOA);
        if (!GetVersionExA(record))
            return false;
    }
    return record->dwPlatformId == VER_PLATFORM_WIN32_WINDOWS;
}

}  // namespace corvane
