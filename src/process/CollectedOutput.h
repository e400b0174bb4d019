// `CollectedOutput`: what a child wrote to one stream, kept in blocks until it is joined once.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/ObjectArray.h"
#include "foundation/String.h"

namespace corvane {

// Keeps all of up to 64 MB. Of more it keeps the first and the last half of that, so that a child
// that talks for days doesn't fill the machine.
class CollectedOutput {
  public:
    void add(const char* text, std::size_t length);

    // Appends what is kept to `text`; where something is left out, a line says how much.
    void appendTo(String& text) const;

  private:
    struct Block {
        static constexpr std::size_t capacity = std::size_t{64} << 10;
        char bytes[capacity];
        std::size_t used = 0;
    };
    class BlockList : public ListOf<Block> {};

    static constexpr std::size_t half = std::size_t{32} << 20;

    static void store(BlockList& blocks, const char* text, std::size_t length);

    BlockList first_;
    BlockList last_;
    std::size_t firstLength_ = 0;
    std::size_t lastLength_ = 0;
    std::uint64_t leftOut_ = 0;  // between the two, in whole blocks
};

}  // namespace corvane
