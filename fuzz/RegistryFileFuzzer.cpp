// Exported registry files.
#include "Fuzz.h"
#include "platform/hosted/RegistryFile.h"

using namespace corvane::hosted;
using corvane::fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const RegistryTree tree = parseRegistry(corvane::fuzz::inputText(data, size));
    for (const auto& [path, key] : tree) {
        const std::size_t parentEnd = path.rfind('\\');
        require(parentEnd == std::string::npos || tree.contains(path.substr(0, parentEnd)));
        for (const auto& [name, value] : key)
            require(registryName(name) == name && value.data.size() <= 2 * size);
    }
    return 0;
}
