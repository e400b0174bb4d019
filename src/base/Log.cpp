// The log file.
#include "base/Log.h"

#include "base/RunContext.h"
#include "foundation/TextLines.h"
#include "platform/Platform.h"

namespace corvane {

void logMessage(const String& text, LogLevel level) {
    static constexpr const char* prefixes[] = {"", "WARNING: ", "ERROR: "};
    RunContext& context = runContext();
    if (context.logFile.empty())
        return;
    const StreamGuard log(openStream(context.logFile.cstr(), "a"));
    if (!log)
        return;
    if (!context.logHeaderWritten) {
        std::fputs("------------------\n", log.get());
        context.logHeaderWritten = true;
    }
    std::fputs(prefixes[static_cast<int>(level)], log.get());
    // The stream gives each line the system's own end.
    writeLine(log.get(), replaceAll(text, "\r\n", "\n"));
}

}  // namespace corvane
