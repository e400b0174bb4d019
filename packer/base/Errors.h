// What ends a command of the tool.
#pragma once

#include <stdexcept>

namespace corvane::pack {

// Whatever keeps a command from doing its work; the words are for the user.
class PackError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// A command line that makes no sense; the words are for the user.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace corvane::pack
