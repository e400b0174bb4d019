// A filter that makes machine code of x86-64 pack tighter: what calls, jumps and loads by a
// distance from its own place gets the place that it means instead, which is the same text wherever
// a thing is used from.
#pragma once

#include <cstddef>
#include <cstdint>

namespace corvane {

// The bytes that are filtered at a time; nothing that reaches beyond the end of a block is changed.
inline constexpr std::uint32_t filterBlock = 1 << 16;

// Changes a block that stands at `position` of its file, and back. Any bytes come back as they
// were.
void filterCalls(unsigned char* block, std::size_t size, std::uint32_t position) noexcept;
void restoreCalls(unsigned char* block, std::size_t size, std::uint32_t position) noexcept;

}  // namespace corvane
