// SHA-256 (FIPS 180-4).
#include "packer/runtime/Sha256.h"

#include <algorithm>
#include <bit>
#include <functional>

namespace corvane::pack {

namespace {

// The first 32 bits of the fractional parts of the cube roots of the first 64 primes.
constexpr std::array<std::uint32_t, 64> constants = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

std::array<std::uint32_t, 64> schedule(const std::array<unsigned char, 64>& block) {
    std::array<std::uint32_t, 64> words{};
    for (std::size_t i = 0; i < 64; ++i)
        words[i / 4] = words[i / 4] << 8 | block[i];
    for (std::size_t i = 16; i < 64; ++i) {
        const std::uint32_t a = words[i - 15];
        const std::uint32_t b = words[i - 2];
        words[i] = words[i - 16] + (std::rotr(a, 7) ^ std::rotr(a, 18) ^ a >> 3) + words[i - 7] +
                   (std::rotr(b, 17) ^ std::rotr(b, 19) ^ b >> 10);
    }
    return words;
}

}  // namespace

void Sha256::addBlock() {
    const auto words = schedule(block_);
    auto [a, b, c, d, e, f, g, h] = state_;
    for (std::size_t i = 0; i < 64; ++i) {
        const std::uint32_t first = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) +
                                    ((e & f) ^ (~e & g)) + constants[i] + words[i];
        const std::uint32_t second =
            (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g, g = f, f = e, e = d + first;
        d = c, c = b, b = a, a = first + second;
    }
    const std::array<std::uint32_t, 8> added = {a, b, c, d, e, f, g, h};
    std::transform(state_.begin(), state_.end(), added.begin(), state_.begin(), std::plus<>());
    used_ = 0;
}

void Sha256::add(const void* bytes, std::size_t size) {
    const auto* from = static_cast<const unsigned char*>(bytes);
    size_ += size;
    while (size > 0) {
        const std::size_t piece = std::min(size, block_.size() - used_);
        std::copy_n(from, piece, block_.begin() + static_cast<std::ptrdiff_t>(used_));
        used_ += piece;
        from += piece;
        size -= piece;
        if (used_ == block_.size())
            addBlock();
    }
}

std::array<unsigned char, 32> Sha256::finish() {
    const std::uint64_t bits = size_ * 8;
    constexpr unsigned char padding[64] = {0x80};
    add(padding, 1 + (119 - used_) % 64);
    unsigned char length[8];
    for (std::size_t i = 0; i < 8; ++i)
        length[i] = static_cast<unsigned char>(bits >> (56 - 8 * i));
    add(length, sizeof length);
    std::array<unsigned char, 32> result{};
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = static_cast<unsigned char>(state_[i / 4] >> (24 - 8 * (i % 4)));
    return result;
}

}  // namespace corvane::pack
