// Small files, read and written as a whole.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace corvane::pack {

// Raises `PackError` when the file can't be read.
std::string readWhole(const std::filesystem::path& path);

// Writes beside the file and renames, so that a failure leaves an earlier one as it was. Raises
// `PackError`.
void writeWhole(const std::filesystem::path& path, std::string_view content);

// A file in the making: what is written to `path()` takes the place of the target with `keep`, and
// is removed without it.
class PartialFile {
  public:
    // Where the file for `target` is made: beside it.
    static std::filesystem::path pathFor(std::filesystem::path target) { return target += ".part"; }

    // Doesn't create the file. Raises `PackError` for a target that isn't a file, such as a folder
    // or a device.
    explicit PartialFile(std::filesystem::path target);
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;
    ~PartialFile();

    const std::filesystem::path& path() const { return path_; }
    // Raises `PackError`.
    void keep();

  private:
    std::filesystem::path target_;
    std::filesystem::path path_;
};

}  // namespace corvane::pack
