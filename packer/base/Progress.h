// The progress of long work, on a terminal alone.
#pragma once

#include <cstdint>
#include <string>

namespace corvane::pack {

// Shows on standard error how many percent of `total` bytes are done, in a line that is gone in the
// end. Less than 50 MB, or a standard error that is no terminal, is worth no line.
class Progress {
  public:
    Progress(std::string what, std::uint64_t total);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    void reach(std::uint64_t done);

  private:
    std::string what_;
    std::uint64_t total_;
    bool shown_;
    int percent_ = -1;
};

// "1.2 MB", as it is told to a user.
std::string sizeText(std::uint64_t bytes);

}  // namespace corvane::pack
