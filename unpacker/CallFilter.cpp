// The filter for machine code.
#include "unpacker/CallFilter.h"

namespace corvane {

namespace {

constexpr std::size_t distanceSize = 4;
constexpr std::size_t longestCode = 3;
// Distances of up to 16 MB either way: so many bits, of which the uppermost is the sign.
constexpr std::uint32_t distanceBits = 0x01FF'FFFF;
constexpr std::uint32_t signBit = 0x0100'0000;

// The length of an operation's code that a distance follows; 0 for all other codes.
std::size_t codeLength(const unsigned char* code) noexcept {
    if (code[0] == 0xE8 || code[0] == 0xE9)  // call, jmp
        return 1;
    const bool wide = code[0] == 0x48 || code[0] == 0x4C;
    const bool load = code[1] == 0x8B || code[1] == 0x8D;  // mov, lea
    return wide && load && (code[2] & 0xC7) == 0x05 ? 3 : 0;
}

// Adds to the distance, unless it isn't one of the size that is filtered. It stays one then.
void shift(unsigned char* distance, std::uint32_t by) noexcept {
    if (distance[3] != 0x00 && distance[3] != 0xFF)
        return;
    std::uint32_t value = 0;
    for (std::size_t i = distanceSize; i-- > 0;)
        value = value << 8 | distance[i];
    value = (value + by) & distanceBits;
    if ((value & signBit) != 0)
        value |= ~distanceBits;
    for (std::size_t i = 0; i < distanceSize; ++i)
        distance[i] = static_cast<unsigned char>(value >> 8 * i);
}

// With `sign` 1 or, to go back, all bits set. What might be a distance is passed over also if it
// isn't changed, so that the way back meets the same codes.
void shiftAll(unsigned char* block, std::size_t size, std::uint32_t position,
              std::uint32_t sign) noexcept {
    for (std::size_t i = 0; i + longestCode + distanceSize <= size;) {
        const std::size_t length = codeLength(block + i);
        if (length == 0) {
            ++i;
            continue;
        }
        unsigned char* const distance = block + i + length;
        i += length + distanceSize;
        shift(distance, (position + static_cast<std::uint32_t>(i)) * sign);
    }
}

}  // namespace

void filterCalls(unsigned char* block, std::size_t size, std::uint32_t position) noexcept {
    shiftAll(block, size, position, 1);
}

void restoreCalls(unsigned char* block, std::size_t size, std::uint32_t position) noexcept {
    shiftAll(block, size, position, ~std::uint32_t{0});
}

}  // namespace corvane
