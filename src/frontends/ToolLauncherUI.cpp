// The front end of a command-line tool.
#include "frontends/ToolLauncherUI.h"

#include "base/RunContext.h"
#include "frontends/FrontEnds.h"
#include "platform/Platform.h"

namespace corvane {

Owned<LauncherUI> makeToolFrontEnd(const ArgumentVector& arguments) {
    return makeOwnedAs<LauncherUI, ToolLauncherUI>(arguments);
}

bool ToolLauncherUI::init(void* moduleHandle, std::int32_t) {
    runContext().moduleHandle = moduleHandle;
    runContext().showChildConsole = true;
    return true;
}

std::int32_t ToolLauncherUI::run() {
    return arguments_.count() < 1 ? -1 : runSequence(arguments_, *this);
}

void ToolLauncherUI::showMessage(const String& text) {
    writeErrorOutput((text + "\n").cstr());
}

void ToolLauncherUI::showLink(const String& text, const String& address) {
    showMessage(text);
    showMessage(address);
}

}  // namespace corvane
