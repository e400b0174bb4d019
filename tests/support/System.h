// The machine that a test pretends to have: its drives, its registry and its clock.
#pragma once

#include <string>
#include <vector>

#include "support/Scratch.h"

namespace corvane::test {

// A drive and the directory that it shows, for instance {"C", "drive-c", "fixed"}.
struct MappedDrive {
    std::string letter;
    std::string directory;
    std::string type = "fixed";
};

// Lets the machine have these drives alone, over directories of `scratch`, for a scope. Where that
// can't be done `possible` is false, and the test must not walk the drives.
class MappedDrives {
  public:
    MappedDrives(const Scratch& scratch, const std::vector<MappedDrive>& drives);
    MappedDrives(const MappedDrives&) = delete;
    MappedDrives& operator=(const MappedDrives&) = delete;
    ~MappedDrives();

    static bool possible() noexcept;
};

// Puts a text under HKEY_CURRENT_USER\Software\CorvaneTest into the registry for a scope. An empty
// `name` is the key's default value.
class RegistryText {
  public:
    RegistryText(const Scratch& scratch, const std::string& subkey, const std::string& name,
                 const std::string& value);
    RegistryText(const RegistryText&) = delete;
    RegistryText& operator=(const RegistryText&) = delete;
    ~RegistryText();
};

// Ends every pause of the launcher (`Sleep`) at once for a scope, where that can be done: what it
// waits for it then just looks at more often.
class NoPauses {
  public:
    NoPauses();
    NoPauses(const NoPauses&) = delete;
    NoPauses& operator=(const NoPauses&) = delete;
    ~NoPauses();

  private:
    int order_;
};

}  // namespace corvane::test
