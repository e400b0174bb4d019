// Reading and writing of the process's environment variables.
#pragma once

#include "foundation/String.h"

namespace corvane {

// A variable's value; empty when it isn't set, too.
String getEnvironmentValue(const String& name);

// Sets a variable, also to the empty text; children that start from now on see it.
void setEnvironmentValue(const String& name, const String& value);

// Takes a variable that has a value out of the environment for a scope.
class VariableRemoved {
  public:
    explicit VariableRemoved(const char* name);
    VariableRemoved(const VariableRemoved&) = delete;
    VariableRemoved& operator=(const VariableRemoved&) = delete;
    ~VariableRemoved();

  private:
    const char* const name_;
    const String value_;
};

}  // namespace corvane
