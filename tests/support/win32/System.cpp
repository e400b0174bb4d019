// Drives and registry of Windows itself.
#include "support/System.h"

#include "platform/Platform.h"

namespace corvane::test {

// The drives are the machine's own.
MappedDrives::MappedDrives(const Scratch&, const std::vector<MappedDrive>&) {}
MappedDrives::~MappedDrives() = default;
bool MappedDrives::possible() noexcept {
    return false;
}

RegistryText::RegistryText(const Scratch&, const std::string& subkey, const std::string& name,
                           const std::string& value) {
    const std::string key = "Software\\CorvaneTest\\" + subkey;
    RegSetKeyValueA(HKEY_CURRENT_USER, key.c_str(), name.c_str(), REG_SZ, value.c_str(),
                    static_cast<DWORD>(value.size() + 1));
}

RegistryText::~RegistryText() {
    RegDeleteTreeA(HKEY_CURRENT_USER, "Software\\CorvaneTest");
}

// Windows' pauses take their time.
NoPauses::NoPauses() : order_(0) {}
NoPauses::~NoPauses() = default;

}  // namespace corvane::test
