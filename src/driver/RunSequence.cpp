// The run sequence.
#include "driver/RunSequence.h"

#include "base/RunContext.h"
#include "driver/RunDriver.h"
#include "driver/RunGuard.h"
#include "foundation/Exceptions.h"
#include "host/Paths.h"
#include "launcherfile/LauncherKind.h"
#include "launcherfile/PayloadFormat.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

// A wizard's own way of saying that the user was told already.
constexpr std::int32_t quietFailure = 1000;

// Whether this launcher keeps quiet about a child's exit value of 1000. One that has no readable
// kind does not.
bool isQuiet(const String& path) {
    try {
        return isWizardKind(launcherKind(path.cstr()));
    } catch (const LauncherException&) {
        return false;
    }
}

}  // namespace

std::int32_t runSequence(const ArgumentVector& arguments, RunObserver& observer) {
    const String path = modulePath();
    StringList args;
    for (std::int32_t i = 1; i < arguments.count(); ++i)
        args.add(arguments.at(i));
    const RunGuard guard;
    const std::int32_t result = runLauncher(args, path);
    observer.onRunEnded(result);
    const String failureText = runContext().childStdErr;
    const bool quiet = isQuiet(path) && result == quietFailure;
    if (result != 0 && !failureText.empty() && !quiet && endRequests() == 0)
        observer.showFailureText(failureText);
    return result;
}

}  // namespace corvane
