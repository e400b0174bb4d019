// The orders of a launcher that fails on order, which the environment brings. What the launcher
// starts doesn't see them.
//
// CORVANE_RECORD names a file, which gets the name of each operation that can fail as it is called.
// CORVANE_FAULT is NAME CODE N for the N-th call of an operation, or NAME CODE N+ from there on.
#pragma once

#include <cstdlib>
#include <sstream>
#include <string>

#include "platform/Platform.h"

namespace corvane {

struct Orders {
    std::string record;     // the file; empty for none
    std::string operation;  // that is to fail; empty for none
    DWORD code = 0;
    int call = 0;
    bool lasting = false;
};

inline std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

// The orders, whose variables are gone then.
inline Orders takeOrders() {
    Orders orders;
    orders.record = variable("CORVANE_RECORD");
    std::istringstream fault(variable("CORVANE_FAULT"));
    if (fault >> orders.operation >> orders.code >> orders.call)
        orders.lasting = fault.peek() == '+';
    for (const char* const name : {"CORVANE_RECORD", "CORVANE_FAULT"})
        SetEnvironmentVariableA(name, nullptr);
    return orders;
}

}  // namespace corvane
