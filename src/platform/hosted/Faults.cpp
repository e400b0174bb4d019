// The list of faults that wait for their call.
#include "platform/hosted/Faults.h"

#include <string>
#include <vector>

#include "platform/hosted/SystemOperations.h"

namespace corvane::hosted {

bool faultsWaiting = false;

namespace {

// One order to fail, with the calls that still pass before it.
struct Fault {
    int number;
    std::string name;
    DWORD code;
    int callsLeft;  // 0: fails on every call
};

struct FaultList {
    std::vector<Fault> faults;
    int lastNumber = 0;
};

// Never destroyed: operations may be called from the destructors of other statics.
FaultList& faultList() {
    static FaultList& list = *new FaultList;
    return list;
}

}  // namespace

int failOperation(const char* name, DWORD code, int nthCall) {
    FaultList& list = faultList();
    list.faults.push_back({++list.lastNumber, name, code, nthCall});
    faultsWaiting = true;
    return list.lastNumber;
}

void removeFault(int fault) {
    FaultList& list = faultList();
    std::erase_if(list.faults, [&](const Fault& f) { return f.number == fault; });
    faultsWaiting = !list.faults.empty();
}

bool takeFault(const char* name) {
    FaultList& list = faultList();
    bool fires = false;
    // Every fault of this name counts the call, also when another one fires.
    std::erase_if(list.faults, [&](Fault& fault) {
        if (fault.name != name) {
            return false;
        }
        const bool usedUp = fault.callsLeft == 1;
        // A fault for every call has 0 left from the start and fires each time.
        if (fault.callsLeft > 1) {
            --fault.callsLeft;
        } else {
            fires = true;
            SetLastError(fault.code);
        }
        return usedUp;
    });
    faultsWaiting = !list.faults.empty();
    return fires;
}

}  // namespace corvane::hosted
