// Whole files as texts.
#include "packer/base/TextFile.h"

#include <fstream>
#include <sstream>

#include "packer/base/Errors.h"

namespace corvane::pack {

std::string readText(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream || std::filesystem::is_directory(path))
        throw PackError(path.string() + ": the file can't be opened");
    std::ostringstream text;
    text << stream.rdbuf();
    return std::move(text).str();
}

}  // namespace corvane::pack
