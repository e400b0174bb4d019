// The list of faults that wait for their call.
#include "platform/hosted/Faults.h"

#include <unistd.h>

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
    int callsLeft;  // 0: fails from now on
    bool lasting;   // goes on failing once it has begun
};

struct FaultList {
    std::vector<Fault> faults;
    int lastNumber = 0;
    int record = -1;  // descriptor
};

// Never destroyed: operations may be called from the destructors of other statics.
FaultList& faultList() {
    static FaultList& list = *new FaultList;
    return list;
}

int add(const char* name, DWORD code, int nthCall, bool lasting) {
    FaultList& list = faultList();
    list.faults.push_back({++list.lastNumber, name, code, nthCall, lasting});
    faultsWaiting = true;
    return list.lastNumber;
}

void updateWaiting() {
    faultsWaiting = !faultList().faults.empty() || faultList().record >= 0;
}

void noteCall(const char* name) {
    if (faultList().record < 0) {
        return;
    }
    const std::string line = std::string(name) + '\n';
    [[maybe_unused]] const auto written = write(faultList().record, line.data(), line.size());
}

}  // namespace

int failOperation(const char* name, DWORD code, int nthCall) {
    return add(name, code, nthCall, nthCall == 0);
}

int failOperationFrom(const char* name, DWORD code, int nthCall) {
    return add(name, code, nthCall, true);
}

void removeFault(int fault) {
    std::erase_if(faultList().faults, [&](const Fault& f) { return f.number == fault; });
    updateWaiting();
}

void recordOperations(int descriptor) {
    faultList().record = descriptor;
    updateWaiting();
}

bool takeFault(const char* name) {
    noteCall(name);
    bool fires = false;
    // Every fault of this name counts the call, also when another one fires.
    std::erase_if(faultList().faults, [&](Fault& fault) {
        if (fault.name != name || fault.callsLeft > 1) {
            fault.callsLeft -= fault.name == name;
            return false;
        }
        fires = true;
        SetLastError(fault.code);
        fault.callsLeft = 0;
        return !fault.lasting;
    });
    updateWaiting();
    return fires;
}

}  // namespace corvane::hosted
