// The windowed front end.
#include "frontends/windowed/WindowsLauncherUI.h"

#include "base/Messages.h"
#include "base/RunContext.h"
#include "frontends/FrontEnds.h"
#include "frontends/windowed/Decisions.h"
#include "frontends/windowed/FolderDialog.h"
#include "frontends/windowed/LinkDialog.h"
#include "frontends/windowed/MainWindow.h"
#include "frontends/windowed/ProgressDialog.h"

namespace corvane {

namespace {

// An owner that isn't seen would keep a box out of the taskbar.
HWND boxOwner() {
    return IsWindowVisible(progressDialog()) ? progressDialog() : nullptr;
}

// The system knows the progress bar's class only once a program asks for it.
void loadProgressBarClass() {
    INITCOMMONCONTROLSEX classes{};
    classes.dwSize = sizeof classes;
    classes.dwICC = ICC_PROGRESS_CLASS;
    InitCommonControlsEx(&classes);
}

}  // namespace

Owned<LauncherUI> makeWindowedFrontEnd(const ArgumentVector& arguments) {
    return makeOwnedAs<LauncherUI, WindowsLauncherUI>(arguments);
}

bool WindowsLauncherUI::init(void* moduleHandle, std::int32_t) {
    runContext().moduleHandle = moduleHandle;
    loadProgressBarClass();
    return createMainWindow(arguments_);
}

std::int32_t WindowsLauncherUI::run() {
    return runMessageLoop();
}

void WindowsLauncherUI::setStatus(const String& text) {
    setDialogStatus(text);
}

void WindowsLauncherUI::setStatusDetail(const String& text, const String& detail) {
    ResourceText line;
    line.formatText("%1!s! %2!s!", text.cstr(), detail.cstr());
    setDialogStatus(line.text());
}

void WindowsLauncherUI::stepProgress(std::int32_t delta) {
    stepBar(delta);
}

void WindowsLauncherUI::setProgress(std::int32_t position) {
    setBar(position);
}

void WindowsLauncherUI::show() {
    ShowWindow(progressDialog(), SW_SHOWNORMAL);
}

void WindowsLauncherUI::hide(std::int16_t delaySeconds) {
    hideDialog(hideDelayMs(delaySeconds));
}

bool WindowsLauncherUI::isVisible() {
    return IsWindowVisible(progressDialog()) != FALSE;
}

void WindowsLauncherUI::showMessage(const String& text) {
    MessageBoxA(boxOwner(), boxText(text).cstr(), title().cstr(), MB_OK | MB_SETFOREGROUND);
}

void WindowsLauncherUI::showLink(const String& text, const String& address) {
    if (!isWebAddress(address) || !showLinkDialog(boxOwner(), title(), boxText(text), address))
        showMessage(text + "\n\n" + address);
}

String WindowsLauncherUI::title() {
    char text[512] = "";
    if (progressDialog() != nullptr)
        GetWindowTextA(progressDialog(), text, sizeof text);
    return text;
}

void WindowsLauncherUI::setTitle(const String& text) {
    SetWindowTextA(progressDialog(), text.cstr());
}

String WindowsLauncherUI::chooseDirectory() {
    return chooseFolder(progressDialog(), loadMessage(MessageId::chooseDirectory));
}

}  // namespace corvane
