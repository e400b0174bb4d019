// A gzip stream inside a file, read piece by piece.
#pragma once

#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>

namespace corvane {

class PackedStream {
  public:
    // Reads the `size` bytes at the position of `file`, which stays the caller's.
    PackedStream(std::FILE* file, std::uint32_t size);
    PackedStream(const PackedStream&) = delete;
    PackedStream& operator=(const PackedStream&) = delete;
    ~PackedStream();

    // Fills `out`. Raises a `LauncherException` when the stream is damaged or holds less.
    void read(char* out, std::size_t size);
    // Raises a `LauncherException` unless the stream ends here and all of it was as it was packed.
    void finish();

  private:
    void inflateSome();

    std::FILE* file_;
    std::uint32_t left_;
    std::unique_ptr<unsigned char[]> block_;
    z_stream zlib_{};
    bool ended_ = false;
};

}  // namespace corvane
