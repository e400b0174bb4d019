// The flows around the search: the script commands FIND_JVM and VERIFY, and the actions SEARCH,
// SEARCH_ALL and VERIFY_JVM of an input file.
#pragma once

#include <cstdint>

#include "foundation/String.h"
#include "launcherfile/TagFile.h"

namespace corvane {

// `showUi` and `showProgress`: whether the front end shows the flow. `showFailure`: whether the
// user is told of a failure; for FIND_JVM it also lets the user pick a JVM by hand.

// Leaves 1 or 0 in N1, and on success the home in S1 and the path of a resolved JVM file in S2.
// Raises `LauncherException` when the search can't go on.
void runFindJvm(bool showUi, bool showFailure);

// Leaves 1 or 0 in N1, and on success the home in S1, for the JVM file with that id in the index.
// Raises `LauncherException` for a bad id, too.
void runVerifyCommand(bool showUi, bool showFailure, std::int32_t fileId);

// The same for a JVM file and a home (empty: the file's own).
void verifyJvmAction(bool showProgress, bool showFailure, TagFile& jvmFile, const String& jvmHome);

// As FIND_JVM, printing N1 and, on success, S1 and S2 on standard output; the file of S2 outlives
// the run. Ends normally whatever happens.
void searchAction(bool showProgress, bool showFailure);

// Prints the number of JVMs on the disks, and for each its home and its resolved JVM file, which
// outlives the run. A failure prints 0.
void searchAllAction(bool showProgress, bool showFailure);

// Prints an object for each home that the hints and, if a JVM file says so, the disks hold.
void describeAllAction(bool showProgress, bool showFailure);

}  // namespace corvane
