// Conversion of wide texts, and the memory blocks that other operations hand out.
#include <cstdlib>
#include <cstring>

#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/SystemOperations.h"
#include "platform/hosted/WideText.h"

using namespace corvane::hosted;

// Blocks are the allocator's own, and a handle is its block.
HGLOBAL GlobalHandle(LPCVOID block) {
    return const_cast<void*>(block);
}

// Blocks are never locked, which Windows reports as FALSE without an error.
BOOL GlobalUnlock(HGLOBAL /*block*/) {
    return fail(NO_ERROR);
}

HGLOBAL GlobalFree(HGLOBAL block) {
    return LocalFree(block);
}

// Null, for success, is always the result.
HLOCAL LocalFree(HLOCAL block) {
    std::free(block);
    return nullptr;
}

int WideCharToMultiByte(UINT codePage, DWORD /*flags*/, LPCWSTR wide, int count, LPSTR buffer,
                        int size, LPCSTR /*defaultChar*/, LPBOOL /*usedDefaultChar*/) {
    if (injectedFailure(__func__)) {
        return 0;
    }
    if (codePage != CP_ACP || wide == nullptr || count != -1) {
        return fail(ERROR_INVALID_PARAMETER);
    }
    const std::string narrow = toNarrow(wide) + '\0';
    if (size != 0 && static_cast<std::size_t>(size) < narrow.size()) {
        return fail(ERROR_INSUFFICIENT_BUFFER);
    }
    if (size != 0) {
        std::memcpy(buffer, narrow.data(), narrow.size());
    }
    return static_cast<int>(narrow.size());
}
