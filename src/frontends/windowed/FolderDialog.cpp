// The shell's dialog for choosing a directory.
#include "frontends/windowed/FolderDialog.h"

#include "frontends/windowed/ComScope.h"

namespace corvane {

namespace {

// What the shell's dialogs give, which goes back to the shell's allocator.
struct ItemPolicy {
    using Value = PIDLIST_ABSOLUTE;
    static Value none() noexcept { return nullptr; }
    static void close(Value item) noexcept {
        IMalloc* allocator = nullptr;
        if (FAILED(SHGetMalloc(&allocator)))
            return;
        allocator->Free(item);
        allocator->Release();
    }
};

}  // namespace

String chooseFolder(HWND owner, const String& title) {
    const ComScope com;
    char displayName[MAX_PATH] = "";
    BROWSEINFOA question{};
    question.hwndOwner = owner;
    question.pszDisplayName = displayName;
    question.lpszTitle = title.cstr();
    question.ulFlags = BIF_DONTGOBELOWDOMAIN;
    const Guard<ItemPolicy> item(SHBrowseForFolderA(&question));
    // A path of the longest kind in UTF-8.
    char path[3 * MAX_PATH] = "";
    return item && SHGetPathFromIDListA(item.get(), path) ? path : "";
}

}  // namespace corvane
