// A packed launcher from outside: what it holds, and the bytes of it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>

#include "launcherfile/LauncherFile.h"

namespace corvane::pack {

class PackedLauncher {
  public:
    // Reads the index, as the launcher itself does, and holds all against the file. Raises
    // `PackError` for a file that is no packed launcher, or a damaged one.
    explicit PackedLauncher(const std::filesystem::path& path);

    std::int32_t kind() const { return kind_; }
    // Whether a signature stands behind the payload.
    bool isSigned() const { return signed_; }
    std::uint64_t size() const { return size_; }
    const LauncherFile& files() const { return files_; }

    // Writes the bytes of an embedded file; `onProgress`, if there is one, is told how many are
    // written. Raises `PackError`.
    void copy(const FileIndexEntry& entry, std::ostream& out,
              const std::function<void(std::uint64_t size)>& onProgress = {}) const;

  private:
    void read();
    void checkEntries() const;
    [[noreturn]] void fail(const std::string& message) const;

    std::filesystem::path path_;
    LauncherFile files_;
    std::int32_t kind_ = 0;
    bool signed_ = false;
    std::uint64_t size_ = 0;
};

// What an entry is called.
std::string nameOf(const FileIndexEntry& entry);

}  // namespace corvane::pack
