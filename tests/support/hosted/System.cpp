// Drives and registry of the stand-in, by its environment variables, and its pauses.
#include "support/System.h"

#include <cstdlib>
#include <fstream>

#include "platform/hosted/Faults.h"

namespace corvane::test {

namespace {

std::string escaped(const std::string& text) {
    std::string out;
    for (const char c : text) {
        if (c == '\\' || c == '"')
            out += '\\';
        out += c;
    }
    return out;
}

}  // namespace

MappedDrives::MappedDrives(const Scratch& scratch, const std::vector<MappedDrive>& drives) {
    std::string table;
    for (const MappedDrive& drive : drives)
        table +=
            drive.letter + "=" + scratch.native(drive.directory).string() + "," + drive.type + ";";
    setenv("CORVANE_DRIVES", table.c_str(), 1);
}

MappedDrives::~MappedDrives() {
    unsetenv("CORVANE_DRIVES");
}

bool MappedDrives::possible() noexcept {
    return true;
}

RegistryText::RegistryText(const Scratch& scratch, const std::string& subkey,
                           const std::string& name, const std::string& value) {
    const auto file = scratch.native("registry.reg");
    std::ofstream(file, std::ios::app)
        << (std::filesystem::exists(file) ? "" : "REGEDIT4\n") << "\n[HKEY_CURRENT_USER\\Software\\"
        << "CorvaneTest\\" << subkey << "]\n"
        << (name.empty() ? "@" : "\"" + name + "\"") << "=\"" << escaped(value) << "\"\n";
    setenv("CORVANE_REGISTRY", file.c_str(), 1);
}

RegistryText::~RegistryText() {
    unsetenv("CORVANE_REGISTRY");
}

NoPauses::NoPauses() : order_(hosted::failOperation("Sleep", 0, 0)) {}
NoPauses::~NoPauses() {
    hosted::removeFault(order_);
}

}  // namespace corvane::test
