// Icon files and pictures, and their way into a program.
#include "Fuzz.h"
#include "packer/base/Errors.h"
#include "packer/face/Icon.h"

using namespace corvane;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::uint16_t also = 102;
    try {
        const pack::Icon icon = pack::readIcon(fuzz::inputText(data, size));
        pack::Resources resources;
        pack::setIcon(resources, icon, also);
        fuzz::require(resources.size() == icon.size() + 2);
        constexpr std::uint32_t address = 0x1000;
        const std::string section = pack::writeResources(resources, address);
        fuzz::require(pack::readResources(section, address) == resources);
    } catch (const pack::PackError&) {
        // It said what is wrong.
    }
    return 0;
}
