// The table that gives the host's directories drive letters. It comes from the environment variable
// CORVANE_DRIVES, such as "C=/srv/c,fixed;D=/srv/d,cdrom", and is read afresh when that changes.
#pragma once

#include <string>
#include <vector>

#include "platform/hosted/WindowsConstants.h"

namespace corvane::hosted {

struct Drive {
    char letter;            // upper case
    std::string directory;  // absolute, without a trailing slash: empty for the host's root
    UINT type;              // one of the DRIVE_ constants
};

// The drives of the system in alphabetical order. Unset, the table is "Z=/,fixed". An entry that
// isn't LETTER=/DIRECTORY[,TYPE], that names a letter again or gives Z: another directory is
// skipped. Valid until the variable changes.
const std::vector<Drive>& systemDrives();

// The drive of a letter in either case, or null if it isn't mapped. Z: always is, to the host's
// root, even when it is no drive of the system.
const Drive* mappedDrive(char letter);

// Parses a table; `systemDrives` calls it.
std::vector<Drive> parseDriveTable(const std::string& table);

}  // namespace corvane::hosted
