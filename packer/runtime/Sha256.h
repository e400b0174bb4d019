// The SHA-256 of bytes that come piece by piece.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace corvane::pack {

class Sha256 {
  public:
    void add(const void* bytes, std::size_t size);
    // Of all that was added; nothing may be added behind it.
    std::array<unsigned char, 32> finish();

  private:
    void addBlock();

    std::array<std::uint32_t, 8> state_ = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                           0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::array<unsigned char, 64> block_{};
    std::size_t used_ = 0;  // bytes of the block
    std::uint64_t size_ = 0;
};

}  // namespace corvane::pack
