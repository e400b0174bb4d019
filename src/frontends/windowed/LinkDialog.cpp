// A message box with an address in it.
#include "frontends/windowed/LinkDialog.h"

#include <memory>

#include "frontends/windowed/ComScope.h"
#include "frontends/windowed/Decisions.h"

namespace corvane {

namespace {

using ShowTaskDialog = HRESULT(WINAPI*)(const TASKDIALOGCONFIG*, int*, int*, BOOL*);

// The system's own function, where it has one. The library is there since `init`, which asked it
// for the progress bar, and comes from nowhere but the system.
ShowTaskDialog taskDialogFunction() {
    const HMODULE controls = GetModuleHandleA("comctl32.dll");
    void* const found =
        controls == nullptr
            ? nullptr
            : reinterpret_cast<void*>(GetProcAddress(controls, "TaskDialogIndirect"));
    return reinterpret_cast<ShowTaskDialog>(found);
}

// The text as the wide functions take it.
std::unique_ptr<wchar_t[]> wide(const String& text) {
    const int size = MultiByteToWideChar(CP_ACP, 0, text.cstr(), -1, nullptr, 0);
    auto buffer = std::make_unique<wchar_t[]>(static_cast<std::size_t>(size) + 1);
    MultiByteToWideChar(CP_ACP, 0, text.cstr(), -1, buffer.get(), size);
    return buffer;
}

// Whatever else in the text may look like a link, one address alone is opened.
HRESULT CALLBACK onNotification(HWND dialog, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/,
                                LONG_PTR address) {
    if (message == TDN_CREATED)
        SetForegroundWindow(dialog);
    if (message == TDN_HYPERLINK_CLICKED)
        ShellExecuteA(dialog, "open", reinterpret_cast<const char*>(address), nullptr, nullptr,
                      SW_SHOWNORMAL);
    return S_OK;
}

}  // namespace

bool showLinkDialog(HWND owner, const String& title, const String& text, const String& address) {
    const ShowTaskDialog showTaskDialog = taskDialogFunction();
    if (showTaskDialog == nullptr)
        return false;
    const ComScope com;
    const auto caption = wide(title);
    const auto content = wide(text + "\n\n<a href=\"" + address + "\">" + address + "</a>");
    TASKDIALOGCONFIG dialog{};
    dialog.cbSize = sizeof dialog;
    dialog.hwndParent = owner;
    dialog.dwFlags = TDF_ENABLE_HYPERLINKS | TDF_ALLOW_DIALOG_CANCELLATION | TDF_SIZE_TO_CONTENT |
                     (readsFromTheRight(text) ? TDF_RTL_LAYOUT : 0);
    dialog.dwCommonButtons = TDCBF_OK_BUTTON;
    dialog.pszWindowTitle = caption.get();
    dialog.pszContent = content.get();
    dialog.pfCallback = onNotification;
    dialog.lpCallbackData = reinterpret_cast<LONG_PTR>(address.cstr());
    return SUCCEEDED(showTaskDialog(&dialog, nullptr, nullptr, nullptr));
}

}  // namespace corvane
