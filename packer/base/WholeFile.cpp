// Small files, read and written as a whole.
#include "packer/base/WholeFile.h"

#include <fstream>
#include <sstream>

#include "packer/base/Errors.h"

namespace corvane::pack {

namespace fs = std::filesystem;

std::string readWhole(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream || fs::is_directory(path))
        throw PackError(path.string() + ": the file can't be opened");
    std::ostringstream content;
    content << stream.rdbuf();
    return std::move(content).str();
}

void writeWhole(const fs::path& path, std::string_view content) {
    PartialFile partial(path);
    std::ofstream stream(partial.path(), std::ios::binary | std::ios::trunc);
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
    stream.close();
    if (!stream)
        throw PackError(path.string() + ": the file can't be written");
    partial.keep();
}

PartialFile::PartialFile(fs::path target) : target_(std::move(target)), path_(pathFor(target_)) {
    if (fs::exists(target_) && !fs::is_regular_file(target_))
        throw PackError(target_.string() +
                        ": this is no file that could be replaced; name another one");
}

PartialFile::~PartialFile() {
    std::error_code ignored;
    fs::remove(path_, ignored);
}

void PartialFile::keep() {
    std::error_code error;
    fs::rename(path_, target_, error);
    if (error)
        throw PackError(target_.string() + ": the file can't be written: " + error.message());
}

}  // namespace corvane::pack
