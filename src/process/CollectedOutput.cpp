// The blocks of a child's output.
#include "process/CollectedOutput.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace corvane {

namespace {

String leftOutLine(std::uint64_t bytes) {
    char digits[20];
    const auto end = std::to_chars(digits, digits + sizeof digits, bytes).ptr;
    return String("\n[... ")
        .append(digits, static_cast<std::size_t>(end - digits))
        .append(" bytes are left out here ...]\n");
}

}  // namespace

void CollectedOutput::add(const char* text, std::size_t length) {
    const std::size_t toFirst = std::min(length, half - firstLength_);
    store(first_, text, toFirst);
    firstLength_ += toFirst;
    store(last_, text + toFirst, length - toFirst);
    lastLength_ += length - toFirst;
    while (lastLength_ >= half + Block::capacity) {
        const std::size_t gone = (*last_.begin()).used;
        last_.removeAt(0);
        lastLength_ -= gone;
        leftOut_ += gone;
    }
}

void CollectedOutput::store(BlockList& blocks, const char* text, std::size_t length) {
    while (length > 0) {
        Block* block = blocks.at(blocks.count() - 1);
        if (block == nullptr || block->used == Block::capacity)
            block = blocks.add(std::make_unique<Block>());
        const std::size_t size = std::min(length, Block::capacity - block->used);
        std::memcpy(block->bytes + block->used, text, size);
        block->used += size;
        text += size;
        length -= size;
    }
}

void CollectedOutput::appendTo(String& text) const {
    std::size_t excess = lastLength_ > half ? lastLength_ - half : 0;
    const String line = leftOut_ + excess == 0 ? String() : leftOutLine(leftOut_ + excess);
    text.reserve(text.length() + firstLength_ + line.length() + lastLength_ - excess);
    for (const Block& block : first_)
        text.append(block.bytes, block.used);
    text.append(line);
    for (const Block& block : last_) {
        const std::size_t skipped = std::min(excess, block.used);
        text.append(block.bytes + skipped, block.used - skipped);
        excess -= skipped;
    }
}

}  // namespace corvane
