// The debug log.
#include "base/DebugLog.h"

#include "base/RunContext.h"
#include "platform/Platform.h"

namespace corvane {

void debugLogLine(const String& text, bool newline) {
    if (runContext().debugLogPath.empty())
        return;
    const StreamGuard log(openStream(runContext().debugLogPath.cstr(), "a"));
    if (log)
        std::fputs((newline ? text + "\n" : text).cstr(), log.get());
}

}  // namespace corvane
