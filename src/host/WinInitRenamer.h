// `WinInitRenamer`: the note in the wininit file by which a Windows 95 family system deletes files
// at its next boot; and `ByteBuffer`, a block of zeroed memory.
#pragma once

#include <cstdint>
#include <memory>

#include "foundation/StringList.h"

namespace corvane {

// Zeroed memory for a text of a size that the system tells first.
class ByteBuffer {
  public:
    // Gives up what is held and takes `count` elements, unless a number is 0.
    void allocate(std::uint32_t count, std::uint32_t elementSize);

    char* bytes() noexcept { return bytes_.get(); }

  private:
    std::unique_ptr<char[]> bytes_;
};

class WinInitRenamer {
  public:
    virtual ~WinInitRenamer() = default;

    // Remembers a path, by its short (8.3) name, for deletion.
    void addDeleteLine(const char* path);

    // Writes the remembered lines as the first of section [Rename] of WinInit.Ini in the Windows
    // directory, adding the section if there is none. Gives 0 or the system's error code, with
    // which the lines stay remembered. With no lines the file isn't opened.
    std::uint32_t flush();

  private:
    StringList lines_;
};

}  // namespace corvane
