// Constants of the payload that is appended to the program: index and trailer (docs/payload.md).
// All integers are big-endian, all positions count from the first byte of the file.
#pragma once

#include <cstdint>

namespace corvane {

// The last four bytes of the trailer: CA 82 CA 82.
inline constexpr std::uint32_t identification = 0xCA82CA82;

// The trailer: kind (1 byte), position of the index (4), identification (4).
inline constexpr std::int32_t trailerSize = 9;
inline constexpr std::int32_t trailerSizeBehindKind = 8;

// Longest file name in the index; its length is read as a signed 16-bit number.
inline constexpr std::int32_t longestName = 32767;

// What an embedded file is.
enum class FileType : std::uint32_t {
    instructions = 0,   // tag file; the first one counts
    jvmFile = 1,        // tag file; all count, in order of preference
    launchScript = 2,   // tag file; the first one counts
    classpathFile = 3,  // each joins the class path
    jvmInstaller = 4,   // the first one counts
    verifyClass = 5,    // the last one counts
    applicationArchive = 6,
    embeddedLauncher = 7,
    jvmMessage = 8,  // tag file; the first one counts
};

inline constexpr std::uint32_t highestFileType = 8;

constexpr bool isTagFile(FileType type) noexcept {
    return type == FileType::instructions || type == FileType::jvmFile ||
           type == FileType::launchScript || type == FileType::jvmMessage;
}

// What the launcher kinds 0 and 2 share: exit value 1000 shows no failure text, and a JVM file's
// SET_ENV_FOR_WIZARD is applied. Kind 0 alone has the tall dialog.
constexpr bool isWizardKind(std::int32_t kind) noexcept {
    return kind == 0 || kind == 2;
}

// The kind of a command-line tool, which has no front end of its own.
inline constexpr std::int32_t toolKind = 128;

}  // namespace corvane
