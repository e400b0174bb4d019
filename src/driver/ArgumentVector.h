// `ArgumentVector`: the command line as a list of arguments, read through whichever character
// interface the system family has.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/String.h"
#include "foundation/StringList.h"

namespace corvane {

class ArgumentVector {
  public:
    // Fills the vector from the process's command line: split by the system on the NT family, by
    // `parseArgument` on the Windows 95 family. True on success.
    bool build();

    std::int32_t count() const noexcept { return count_; }

    // The argument's NUL-terminated text, element 0 being the program name; null when `index` is
    // out of range.
    const char* at(std::int32_t index) const noexcept;

  private:
    void buildWide();
    bool buildAnsi();

    std::int32_t count_ = 0;
    StringList arguments_;
};

// Cuts one argument of `commandLine` from `start` on; `next` is where to go on, or `npos`. In all
// but the first argument a backslash protects a double quote; it stays in front of anything else.
// Always true.
bool parseArgument(const String& commandLine, std::size_t start, bool firstArgument, String& token,
                   std::size_t& next);

// The text in the ANSI code page; empty if it can't be converted. `Wide` is the system's 16-bit
// character.
template <class Wide>
String wideToAnsi(const Wide* wideText);

}  // namespace corvane
