// Big-endian numbers, one after the other, in bytes that nobody has checked yet.
#pragma once

#include <cstdint>
#include <string_view>

#include "packer/base/Errors.h"

namespace corvane::pack {

class ByteReader {
  public:
    explicit ByteReader(std::string_view bytes) : bytes_(bytes) {}

    // The next `size` bytes. Raises `PackError` when fewer are left.
    std::string_view take(std::size_t size) {
        if (size > bytes_.size())
            throw PackError("it ends too early");
        const std::string_view part = bytes_.substr(0, size);
        bytes_.remove_prefix(size);
        return part;
    }

    std::uint32_t number(std::size_t size) {
        std::uint32_t value = 0;
        for (const char byte : take(size))
            value = value << 8 | static_cast<unsigned char>(byte);
        return value;
    }
    std::uint32_t u1() { return number(1); }
    std::uint32_t u2() { return number(2); }
    std::uint32_t u4() { return number(4); }

  private:
    std::string_view bytes_;
};

}  // namespace corvane::pack
