// The launcher's main program: makes what the floors only declare to each other, and runs.
#include "base/RunContext.h"
#include "entry/LauncherMain.h"
#include "launcherfile/LauncherFile.h"
#include "platform/Platform.h"

int main() {
    corvane::restrictLibraryLoading();
    corvane::watchEndRequests();
    corvane::runContext().launcherFile = corvane::makeOwned<corvane::LauncherFile>();
    return corvane::launcherMain();
}
