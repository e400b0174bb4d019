// The debug log.
#include "base/DebugLog.h"

#include "base/RunContext.h"
#include "foundation/TextLines.h"
#include "platform/Platform.h"

namespace corvane {

void debugLogLine(const String& text) {
    if (runContext().debugLogPath.empty())
        return;
    const StreamGuard log(openStream(runContext().debugLogPath.cstr(), "a"));
    if (log)
        writeLine(log.get(), text);
}

}  // namespace corvane
