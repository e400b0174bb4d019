// The cleanup behind a run.
#include "driver/RunGuard.h"

#include "host/TempFiles.h"

namespace corvane {

RunGuard::~RunGuard() {
    try {
        cleanupAtExit();
    } catch (...) {
        // There is nobody left to tell.
    }
}

}  // namespace corvane
