// Little-endian numbers in a file that nobody has checked yet.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "packer/base/Errors.h"

namespace corvane::pack {

// The `size` bytes at `at`. Raises `PackError` when the file ends in front of their end.
inline std::string_view partOf(std::string_view bytes, std::size_t at, std::size_t size) {
    if (at > bytes.size() || size > bytes.size() - at)
        throw PackError("the file is damaged: it ends too early, or a position in it is wrong");
    return bytes.substr(at, size);
}

// The number of `size` bytes, four at most, at `at`. Raises what `partOf` raises.
inline std::uint32_t numberAt(std::string_view bytes, std::size_t at, std::size_t size) {
    std::uint32_t number = 0;
    for (const char byte : partOf(bytes, at, size)) {
        number = number >> 8 | static_cast<std::uint32_t>(static_cast<unsigned char>(byte)) << 24;
    }
    return number >> (32 - 8 * size);
}

inline void appendNumber(std::string& bytes, std::uint32_t number, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i)
        bytes.push_back(static_cast<char>(number >> 8 * i & 0xFF));
}

// Overwrites the number of `size` bytes at `at`, which lies inside.
inline void setNumber(std::string& bytes, std::size_t at, std::uint32_t number, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i)
        bytes.at(at + i) = static_cast<char>(number >> 8 * i & 0xFF);
}

// `text` as Windows' resources hold it.
inline void appendText(std::string& bytes, std::u16string_view text) {
    for (const char16_t unit : text)
        appendNumber(bytes, unit, 2);
}

// Zeros up to the next multiple of `unit`.
inline void fillUp(std::string& bytes, std::size_t unit) {
    bytes.append((unit - bytes.size() % unit) % unit, '\0');
}

}  // namespace corvane::pack
