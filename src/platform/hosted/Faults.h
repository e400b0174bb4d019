// Failures on demand: a test says that an operation fails with a code on its n-th call. Every
// operation of the layer that can fail asks here first; with no fault set that costs one flag test.
#pragma once

#include "platform/hosted/WindowsTypes.h"

namespace corvane::hosted {

// Makes the `nthCall`-th call from now on (1 is the next one, 0 stands for every one) of the
// operation `name`, as "DeleteFileA", fail with the Windows code `code`. Such a call does nothing:
// it sets the last error, or errno for openStream, and gives its failure value. Each fault counts
// the calls by itself; except with 0 it is used up by failing. Gives a number for `removeFault`.
int failOperation(const char* name, DWORD code, int nthCall = 1);

// The same for that call and every later one.
int failOperationFrom(const char* name, DWORD code, int nthCall);

// Takes a fault back, if it still waits.
void removeFault(int fault);

// A fault for the length of a scope.
class ScopedFault {
  public:
    explicit ScopedFault(const char* name, DWORD code, int nthCall = 1)
        : fault_(failOperation(name, code, nthCall)) {}
    ~ScopedFault() { removeFault(fault_); }
    ScopedFault(const ScopedFault&) = delete;
    ScopedFault& operator=(const ScopedFault&) = delete;

  private:
    int fault_;
};

// Writes the name of each operation that asks, one a line, to a file that stays the caller's.
void recordOperations(int descriptor);

// For the operations themselves: is this call to fail? The last error is set then.
extern bool faultsWaiting;  // or a record is kept
bool takeFault(const char* name);
inline bool injectedFailure(const char* name) {
    return faultsWaiting && takeFault(name);
}

}  // namespace corvane::hosted
