// What the report tells of the run as a whole.
#include "driver/RunReport.h"

#include "base/Report.h"
#include "base/RunContext.h"
#include "foundation/Exceptions.h"
#include "host/Environment.h"
#include "host/TempFiles.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

// One that isn't there is told by whoever needs it.
String temporaryRoot() {
    try {
        return getTempRoot();
    } catch (const LauncherException&) {
        return runContext().tempDir;
    }
}

}  // namespace

void prepareReport() {
    runContext().startTick = GetTickCount64();
    runContext().reportFile = getEnvironmentValue("CORVANE_REPORT");
}

void reportStart() {
    RunContext& context = runContext();
    if (!reportWanted() || context.reportStarted)
        return;
    context.reportStarted = true;
    const SystemFacts facts = systemFacts();
    ReportObject("start")
        .add("launcher", context.launcherPath)
        .add("version", CORVANE_VERSION)
        .add("system", facts.system)
        .add("arguments", context.originalArgs)
        .add("locale", facts.locale)
        .add("codePage", facts.codePage)
        .add("consoleCodePage", facts.consoleCodePage)
        .add("temporaryRoot", temporaryRoot())
        .write();
}

void reportEnd(std::int32_t exitValue, const String& failure) {
    reportStart();
    const std::uint64_t duration = GetTickCount64() - runContext().startTick;
    ReportObject end("end");
    end.add("exitValue", exitValue).add("milliseconds", static_cast<std::int64_t>(duration));
    if (!failure.empty())
        end.add("message", failure);
    end.write();
}

}  // namespace corvane
