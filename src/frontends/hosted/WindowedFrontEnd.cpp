// The windowed front end of a host without windows: the console's.
#include "frontends/FrontEnds.h"

namespace corvane {

Owned<LauncherUI> makeWindowedFrontEnd(const ArgumentVector& arguments) {
    return makeConsoleFrontEnd(arguments);
}

}  // namespace corvane
