// Environment variables.
#include "host/Environment.h"

#include "platform/Platform.h"

namespace corvane {

String getEnvironmentValue(const String& name) {
    const DWORD size = GetEnvironmentVariableA(name.cstr(), nullptr, 0);
    if (size <= 1)
        return {};
    String value(size - 1, '\0');
    GetEnvironmentVariableA(name.cstr(), value.mutableAt(0), size);
    return value;
}

void setEnvironmentValue(const String& name, const String& value) {
    SetEnvironmentVariableA(name.cstr(), value.cstr());
}

VariableRemoved::VariableRemoved(const char* name)
    : name_(name), value_(getEnvironmentValue(name)) {
    if (!value_.empty())
        SetEnvironmentVariableA(name_, nullptr);
}

VariableRemoved::~VariableRemoved() {
    if (!value_.empty())
        setEnvironmentValue(name_, value_);
}

}  // namespace corvane
