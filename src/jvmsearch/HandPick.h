// The choice of a JVM by hand, when no search has found one.
#pragma once

#include "foundation/String.h"

namespace corvane {

// Tells the user, asks for a java.exe, and takes the home it lies in, unverified. On success `home`
// and `file`, the path of a resolved JVM file, are set. False when the user cancels or the file
// isn't the java.exe of a JVM, which the user is told. Raises `LauncherException`.
bool pickJvmByHand(String& home, String& file);

}  // namespace corvane
