// Reading of CORVANE_DRIVES.
#include "platform/hosted/DriveTable.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <optional>

#include "platform/hosted/Paths.h"

namespace corvane::hosted {

namespace {

// The types by their names in the table.
constexpr struct {
    const char* name;
    UINT type;
} driveTypes[] = {
    {"fixed", DRIVE_FIXED}, {"remote", DRIVE_REMOTE},   {"removable", DRIVE_REMOVABLE},
    {"cdrom", DRIVE_CDROM}, {"ramdisk", DRIVE_RAMDISK},
};

constexpr char hostRootLetter = 'Z';

std::optional<UINT> driveType(const std::string& name) {
    for (const auto& row : driveTypes) {
        if (row.name == name) {
            return row.type;
        }
    }
    return std::nullopt;
}

// One entry; none if it isn't usable. The directory goes through the normal form, so that it can be
// compared with the beginnings of paths.
std::optional<Drive> parseEntry(const std::string& entry) {
    if (entry.size() < 3 || !isDriveLetter(entry[0]) || entry[1] != '=' || entry[2] != '/') {
        return std::nullopt;
    }
    const std::size_t comma = std::min(entry.find(','), entry.size());
    const auto type = comma == entry.size() ? DRIVE_FIXED : driveType(entry.substr(comma + 1));
    if (!type) {
        return std::nullopt;
    }
    const std::string directory = normalPath("", entry.substr(3, comma - 3));
    const char letter = upperLetter(entry[0]);
    // Whatever no other drive holds is named through Z:, so that can't lead anywhere else.
    if (letter == hostRootLetter && directory != "/") {
        return std::nullopt;
    }
    return Drive{letter, directory == "/" ? "" : directory, *type};
}

bool byLetter(const Drive& a, const Drive& b) {
    return a.letter < b.letter;
}

const Drive* findDrive(const std::vector<Drive>& drives, char letter) {
    const auto found = std::find_if(drives.begin(), drives.end(),
                                    [&](const Drive& drive) { return drive.letter == letter; });
    return found == drives.end() ? nullptr : &*found;
}

// The table as read last, and the text that it was read from.
struct CachedTable {
    bool read = false;
    std::optional<std::string> text;  // of the variable; none when it is unset
    std::vector<Drive> drives;
};

bool isCurrent(const CachedTable& cache, const char* text) {
    return cache.read && (text == nullptr ? !cache.text : cache.text && *cache.text == text);
}

}  // namespace

// Of two entries for one letter the first counts.
std::vector<Drive> parseDriveTable(const std::string& table) {
    std::vector<Drive> drives;
    for (std::size_t start = 0; start <= table.size();) {
        const std::size_t end = std::min(table.find(';', start), table.size());
        const std::optional<Drive> drive = parseEntry(table.substr(start, end - start));
        if (drive && findDrive(drives, drive->letter) == nullptr) {
            drives.push_back(*drive);
        }
        start = end + 1;
    }
    std::sort(drives.begin(), drives.end(), byLetter);
    return drives;
}

// Asked at every path, so all that it costs as a rule is a comparison of texts.
const std::vector<Drive>& systemDrives() {
    static CachedTable& cache = *new CachedTable;
    const char* text = std::getenv("CORVANE_DRIVES");
    if (!isCurrent(cache, text)) {
        cache.read = true;
        cache.text = text == nullptr ? std::nullopt : std::optional<std::string>(text);
        cache.drives = parseDriveTable(text == nullptr ? "Z=/,fixed" : text);
    }
    return cache.drives;
}

const Drive* mappedDrive(char letter) {
    // Openable without being a drive of the system, hence the type.
    static const Drive hostRoot{hostRootLetter, "", DRIVE_NO_ROOT_DIR};
    const char upper = upperLetter(letter);
    const Drive* drive = findDrive(systemDrives(), upper);
    return drive == nullptr && upper == hostRootLetter ? &hostRoot : drive;
}

}  // namespace corvane::hosted
