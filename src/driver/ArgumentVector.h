// `ArgumentVector`: the command line as a list of arguments, read through whichever character
// interface the system family has.
#pragma once

#include <cstdint>

#include "foundation/String.h"
#include "foundation/StringList.h"

namespace corvane {

class ArgumentVector {
  public:
    // Fills the vector from the process's command line: split by the system on the NT family, by
    // the launcher on the Windows 95 family.
    void build();

    std::int32_t count() const noexcept { return count_; }

    // The argument's NUL-terminated text, element 0 being the program name; null when `index` is
    // out of range.
    const char* at(std::int32_t index) const noexcept;

  private:
    void buildWide();
    void buildAnsi();

    std::int32_t count_ = 0;
    StringList arguments_;
};

}  // namespace corvane
