// The `ui` operations.
#include "base/Ui.h"

#include "base/LauncherUI.h"
#include "base/Messages.h"
#include "base/RunContext.h"
#include "platform/Platform.h"

namespace corvane {

void uiStepProgress(std::int32_t delta) {
    if (!runContext().silent)
        runContext().ui->stepProgress(delta);
}

void uiSetProgress(std::int32_t position) {
    if (!runContext().silent)
        runContext().ui->setProgress(position);
}

void uiSetSilent(bool flag) {
    runContext().silent = flag;
}

void uiHide(std::int16_t delaySeconds) {
    runContext().ui->hide(delaySeconds);
}

void uiShowOrHide() {
    if (runContext().silent)
        uiHide(0);
    else
        runContext().ui->show();
}

void uiShowMessage(const String& text, const String& link) {
    if (runContext().silent || runContext().ui == nullptr)
        return;
    if (link.empty())
        runContext().ui->showMessage(text);
    else
        runContext().ui->showLink(text, link);
}

String uiChooseDirectory() {
    return runContext().silent ? String() : runContext().ui->chooseDirectory();
}

void uiEndRow() {
    runContext().ui->endRow();
}

void uiPrintResult(const String& text) {
    uiEndRow();
    writeOutput((text + "\n").cstr());
}

void uiApplyTitle(const String&) {
    runContext().ui->setTitle(loadMessage(MessageId::title));
}

}  // namespace corvane
