// What makes a launcher of Windows fail on order (Orders.h): linked to one beside its main file.
// The linker leads all imports of the operations, those of libraries that are loaded late as well,
// to the pointers defined here, and knows the real ones by another name.
#include <atomic>
#include <cerrno>
#include <cstdio>

#include "Orders.h"

namespace {

class Plan {
  public:
    // Whether this call of an operation is to fail.
    bool takes(const std::string& operation) {
        note(operation + '\n');
        if (operation != orders_.operation)
            return false;
        const int call = ++calls_;
        return orders_.lasting ? call >= orders_.call : call == orders_.call;
    }

    DWORD code() const { return orders_.code; }

  private:
    void note(const std::string& line);

    const corvane::Orders orders_ = corvane::takeOrders();
    std::atomic<int> calls_ = 0;
};

// There is none before the program's own code begins.
std::atomic<Plan*> plan = nullptr;

// Whether this call is to fail. The last error is set then.
bool fails(const char* operation) {
    Plan* const now = plan;
    if (now == nullptr || !now->takes(operation))
        return false;
    SetLastError(now->code());
    return true;
}

// What an operation gives that tells its error itself.
LSTATUS lastCode() {
    return static_cast<LSTATUS>(GetLastError());
}

// The error of the standard library, as it makes it of the system's.
int numberOf(DWORD code) {
    switch (code) {
        case ERROR_FILE_NOT_FOUND:
            return ENOENT;
        case ERROR_NOT_ENOUGH_MEMORY:
            return ENOMEM;
        case ERROR_DISK_FULL:
            return ENOSPC;
        default:
            return EACCES;
    }
}

}  // namespace

extern "C" {

// `failure` may go by the arguments.
#define OPERATION(name, failure)                                                                  \
    extern decltype(&name) __real___imp_##name;                                                   \
    extern decltype(&name) __wrap___imp_##name;                                                   \
    decltype(&name) __wrap___imp_##name = [](auto... arguments) -> decltype(name(arguments...)) { \
        if (fails(#name))                                                                         \
            return failure;                                                                       \
        return __real___imp_##name(arguments...);                                                 \
    };
#include "WindowsOperations.inc"
#undef OPERATION

// Nobody is there to choose a file, so that the dialog is always cancelled.
extern decltype(&GetOpenFileNameA) __wrap___imp_GetOpenFileNameA;
decltype(&GetOpenFileNameA) __wrap___imp_GetOpenFileNameA = [](auto) -> BOOL { return FALSE; };

// What `openStream` calls, which is recorded under the name that it has on every system.
std::FILE* __real_fopen(const char* path, const char* mode);
std::FILE* __wrap_fopen(const char* path, const char* mode);
std::FILE* __wrap_fopen(const char* path, const char* mode) {
    if (!fails("openStream"))
        return __real_fopen(path, mode);
    errno = numberOf(GetLastError());
    _doserrno = GetLastError();
    return nullptr;
}

}  // extern "C"

namespace {

// A file that is opened for each line, since the run ends without a last word to it.
void Plan::note(const std::string& line) {
    if (orders_.record.empty())
        return;
    const DWORD error = GetLastError();
    if (std::FILE* const file = __real_fopen(orders_.record.c_str(), "ab")) {
        std::fputs(line.c_str(), file);
        std::fclose(file);
    }
    SetLastError(error);
}

const struct Start {
    Start() { plan = new Plan; }
} start;

}  // namespace
