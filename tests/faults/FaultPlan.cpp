// What makes a launcher fail on order: linked to one beside its main file, this reads the orders
// from the environment before the run begins. What the launcher starts doesn't see them.
//
// CORVANE_RECORD names a file, which gets the name of each operation that can fail as it is called.
// CORVANE_FAULT is NAME CODE N for the N-th call of an operation, or NAME CODE N+ from there on.
#include <fcntl.h>

#include <cstdlib>
#include <sstream>
#include <string>

#include "platform/hosted/Faults.h"

namespace {

// The value of a variable, which is gone then.
std::string taken(const char* name) {
    const char* const value = std::getenv(name);
    std::string text = value == nullptr ? "" : value;
    unsetenv(name);
    return text;
}

void order(const std::string& text) {
    std::istringstream words(text);
    std::string operation;
    DWORD code = 0;
    int call = 0;
    if (words >> operation >> code >> call)
        (words.peek() == '+' ? corvane::hosted::failOperationFrom : corvane::hosted::failOperation)(
            operation.c_str(), code, call);
}

struct Plan {
    Plan() {
        order(taken("CORVANE_FAULT"));
        const std::string record = taken("CORVANE_RECORD");
        if (!record.empty())
            corvane::hosted::recordOperations(
                open(record.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
    }
};

const Plan plan;

}  // namespace
