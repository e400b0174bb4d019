// JVM homes for tests, whose java.exe is the program test_java.
#pragma once

#include <string>

#include "foundation/String.h"
#include "support/Scratch.h"

namespace corvane::test {

// Makes a home called `name` in `scratch`, whose executable is `bin\java.exe` and behaves as
// `behaviour` says, and gives its path.
String makeJavaHome(const Scratch& scratch, const std::string& name,
                    const std::string& behaviour = "");

// Puts the program at `name` in `scratch` and gives its path.
String copyTestJava(const Scratch& scratch, const std::string& name);

}  // namespace corvane::test
