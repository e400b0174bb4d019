// Operations on drives.
#include <sys/statvfs.h>

#include <algorithm>
#include <limits>

#include "platform/hosted/DriveTable.h"
#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/FileOperations.h"
#include "platform/hosted/Paths.h"

using namespace corvane::hosted;

namespace {

// The letter of a root such as "C:\", else NUL.
char rootLetter(LPCSTR root) {
    return isDriveLetter(root[0]) && root[1] == ':' ? upperLetter(root[0]) : '\0';
}

// More than Windows' fields can hold reads as all that they can hold.
DWORD clamped(unsigned long value) {
    return static_cast<DWORD>(std::min<unsigned long>(value, std::numeric_limits<DWORD>::max()));
}

}  // namespace

DWORD GetLogicalDriveStringsA(DWORD size, LPSTR buffer) {
    if (injectedFailure(__func__)) {
        return 0;
    }
    std::string roots;
    for (const Drive& drive : systemDrives()) {
        roots.append(1, drive.letter).append(":\\").append(1, '\0');
    }
    return roots.empty() ? 0 : giveText(roots, buffer, size);
}

UINT GetDriveTypeA(LPCSTR root) {
    if (injectedFailure(__func__)) {
        return DRIVE_NO_ROOT_DIR;
    }
    const Drive* drive = mappedDrive(rootLetter(root));
    return drive == nullptr ? DRIVE_NO_ROOT_DIR : drive->type;
}

// Windows counts in sectors of 512 bytes, and so does this where the host's blocks allow it.
BOOL GetDiskFreeSpaceA(LPCSTR root, LPDWORD sectorsPerCluster, LPDWORD bytesPerSector,
                       LPDWORD freeClusters, LPDWORD totalClusters) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    const Drive* drive = mappedDrive(rootLetter(root));
    struct statvfs space {};
    if (drive == nullptr || statvfs((drive->directory + "/").c_str(), &space) != 0) {
        return fail(ERROR_PATH_NOT_FOUND);
    }
    const bool wholeSectors = space.f_frsize >= 512 && space.f_frsize % 512 == 0;
    const unsigned long sectorSize = wholeSectors ? 512 : space.f_frsize;
    *bytesPerSector = clamped(sectorSize);
    *sectorsPerCluster = clamped(space.f_frsize / std::max(sectorSize, 1UL));
    *freeClusters = clamped(space.f_bavail);
    *totalClusters = clamped(space.f_blocks);
    return TRUE;
}

// A relative of the C runtime, not of the system; it has no error code.
int _getdrive() {
    return injectedFailure(__func__) ? 0 : currentDriveLetter() - 'A' + 1;
}
