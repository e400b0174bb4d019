// `String`: sharing, growth and editing of the buffer. The searches are the standard library's.
#include "foundation/String.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <utility>

namespace corvane {

namespace {

constexpr unsigned char mostShares = 254;
constexpr unsigned char frozen = 255;
constexpr std::size_t longest = String::npos - 2;
// A private buffer of at least this capacity is given up by an assignment.
constexpr std::size_t largeCapacity = 32;

// The empty text of all strings without a buffer. Its count reads frozen, so it is never shared.
char emptyText[2] = {static_cast<char>(frozen), '\0'};

void checkLength(std::size_t length) {
    if (length > longest)
        throw LengthException{};
}

std::size_t checkedSum(std::size_t a, std::size_t b) {
    if (b > longest || a > longest - b)
        throw LengthException{};
    return a + b;
}

// Resizes `block` (null: makes one) for `capacity` characters, or gives null.
char* resizeBlock(char* block, std::size_t capacity) noexcept {
    return static_cast<char*>(std::realloc(block, capacity + 2));
}

int compareBytes(std::string_view a, std::string_view b) noexcept {
    const std::size_t shorter = std::min(a.size(), b.size());
    const int order = shorter == 0 ? 0 : std::memcmp(a.data(), b.data(), shorter);
    if (order != 0)
        return order;
    return a.size() < b.size() ? -1 : static_cast<int>(a.size() > b.size());
}

}  // namespace

String& String::operator=(String&& other) noexcept {
    if (this != &other) {
        release();
        swap(other);
    }
    return *this;
}

void String::swap(String& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(length_, other.length_);
    std::swap(capacity_, other.capacity_);
}

const char* String::cstr() const noexcept {
    return data_ != nullptr ? data_ : emptyText + 1;
}

const char& String::at(std::size_t i) const {
    if (i >= length_)
        throw RangeException{};
    return data_[i];
}

char* String::mutableAt(std::size_t i) {
    if (i > length_ || data_ == nullptr)
        return emptyText + 1;
    detach();
    shareCount() = frozen;
    return data_ + i;
}

std::size_t String::find(const char* text, std::size_t pos) const noexcept {
    return view().find(text, pos);
}

std::size_t String::find(const char* text, std::size_t pos, std::size_t count) const noexcept {
    return view().find(text, pos, count);
}

std::size_t String::find(char character, std::size_t pos) const noexcept {
    return view().find(character, pos);
}

std::size_t String::find(const String& text, std::size_t pos) const noexcept {
    return view().find(text.view(), pos);
}

std::size_t String::rfind(const char* text, std::size_t pos) const noexcept {
    return view().rfind(text, pos);
}

std::size_t String::rfind(char character, std::size_t pos) const noexcept {
    return view().rfind(character, pos);
}

std::size_t String::rfind(const String& text, std::size_t pos) const noexcept {
    return view().rfind(text.view(), pos);
}

std::size_t String::findFirstOf(const char* set, std::size_t pos) const noexcept {
    return view().find_first_of(set, pos);
}

std::size_t String::findLastOf(const char* set, std::size_t pos) const noexcept {
    return view().find_last_of(set, pos);
}

std::size_t String::findFirstNotOf(const char* set, std::size_t pos) const noexcept {
    return view().find_first_not_of(set, pos);
}

std::size_t String::findLastNotOf(const char* set, std::size_t pos) const noexcept {
    return view().find_last_not_of(set, pos);
}

String& String::assign(const char* text) {
    return assign(text, std::strlen(text));
}

String& String::assign(const char* text, std::size_t count) {
    if (owns(text))
        return assign(*this, static_cast<std::size_t>(text - data_), count);
    prepareAssign(count);
    if (count > 0) {
        std::memcpy(data_, text, count);
        setLength(count);
    }
    return *this;
}

String& String::assign(std::size_t count, char character) {
    prepareAssign(count);
    if (count > 0) {
        std::memset(data_, character, count);
        setLength(count);
    }
    return *this;
}

String& String::assign(const String& other, std::size_t pos, std::size_t count) {
    count = other.clamped(pos, count);
    if (this == &other) {
        erase(pos + count);
        return erase(0, pos);
    }
    if (count == 0 || count < other.length_ || other.shareCount() >= mostShares)
        return assign(other.cstr() + pos, count);
    release();
    data_ = other.data_;
    length_ = other.length_;
    capacity_ = other.capacity_;
    ++shareCount();
    return *this;
}

void String::reserve(std::size_t wanted) {
    checkLength(wanted);
    if (isShared() || capacity_ < wanted)
        grow(std::max(wanted, length_));
}

String& String::append(const char* text) {
    return append(text, std::strlen(text));
}

String& String::append(const char* text, std::size_t count) {
    if (owns(text))
        return append(String(text, count));
    if (count > 0) {
        const std::size_t end = length_;
        openGap(end, count);
        std::memcpy(data_ + end, text, count);
    }
    return *this;
}

String& String::append(char character) {
    if (length_ == capacity_ || isShared())
        openGap(length_, 1);
    else
        setLength(length_ + 1);
    data_[length_ - 1] = character;
    return *this;
}

String& String::append(const String& other, std::size_t pos, std::size_t count) {
    count = other.clamped(pos, count);
    return append(other.cstr() + pos, count);
}

String& String::insert(std::size_t pos, const char* text) {
    return insert(pos, text, std::strlen(text));
}

String& String::insert(std::size_t pos, const char* text, std::size_t count) {
    if (pos > length_)
        throw RangeException{};
    if (owns(text))
        return insert(pos, String(text, count).cstr(), count);
    if (count > 0) {
        openGap(pos, count);
        std::memcpy(data_ + pos, text, count);
    }
    return *this;
}

String& String::erase(std::size_t pos, std::size_t count) {
    count = clamped(pos, count);
    if (count == 0)
        return *this;
    if (isShared() && count == length_) {
        release();
        return *this;
    }
    detach();
    std::memmove(data_ + pos, data_ + pos + count, length_ - pos - count);
    setLength(length_ - count);
    return *this;
}

String& String::replace(std::size_t pos, std::size_t count, const String& other) {
    return replace(pos, count, other, 0, npos);
}

String& String::replace(std::size_t pos, std::size_t count, const String& other,
                        std::size_t otherPos, std::size_t otherCount) {
    count = clamped(pos, count);
    // A part of its own, since `other` may be this string.
    const String part(other, otherPos, otherCount);
    erase(pos, count);
    return insert(pos, part.cstr(), part.length_);
}

String String::substr(std::size_t pos, std::size_t count) const {
    return {*this, pos, count};
}

int String::compare(const String& other) const noexcept {
    return compareBytes(view(), other.view());
}

int String::compare(const char* text) const noexcept {
    return compareBytes(view(), text);
}

int String::compare(std::size_t pos, std::size_t count, const String& other) const {
    return compare(pos, count, other, 0, npos);
}

int String::compare(std::size_t pos, std::size_t count, const String& other, std::size_t otherPos,
                    std::size_t otherCount) const {
    count = clamped(pos, count);
    otherCount = other.clamped(otherPos, otherCount);
    return compareBytes({cstr() + pos, count}, {other.cstr() + otherPos, otherCount});
}

bool String::isShared() const noexcept {
    return data_ != nullptr && shareCount() != 0 && shareCount() != frozen;
}

bool String::owns(const char* text) const noexcept {
    return data_ != nullptr && !std::less<>()(text, static_cast<const char*>(data_)) &&
           std::less<>()(text, static_cast<const char*>(data_ + length_));
}

// The part of `count` that lies behind `pos`.
std::size_t String::clamped(std::size_t pos, std::size_t count) const {
    if (pos > length_)
        throw RangeException{};
    return std::min(count, length_ - pos);
}

void String::release() noexcept {
    if (isShared())
        --shareCount();
    else if (data_ != nullptr)
        std::free(data_ - 1);
    data_ = nullptr;
    length_ = 0;
    capacity_ = 0;
}

// Takes a private buffer of at least `wanted` characters that holds what fits of the text. A buffer
// that is private already goes through the allocator's own resize: where that can extend a block in
// place or move its pages, a long text that grows piece by piece isn't copied for each piece.
void String::grow(std::size_t wanted) {
    char* const old = data_ == nullptr || isShared() ? nullptr : data_ - 1;
    std::size_t newCapacity = wanted | 31;
    char* block = newCapacity > longest ? nullptr : resizeBlock(old, newCapacity);
    if (block == nullptr) {
        newCapacity = wanted;
        block = resizeBlock(old, newCapacity);
    }
    if (block == nullptr)
        throw std::bad_alloc();
    const std::size_t kept = std::min(length_, newCapacity);
    if (old == nullptr && data_ != nullptr) {
        std::memcpy(block + 1, data_, kept);
        release();
    }
    data_ = block + 1;
    capacity_ = newCapacity;
    shareCount() = 0;
    setLength(kept);
}

void String::detach() {
    if (isShared())
        grow(length_);
}

// Leaves a private buffer for `newLength` characters that the caller writes, or no buffer for none.
void String::prepareAssign(std::size_t newLength) {
    checkLength(newLength);
    const bool reusable = data_ != nullptr && !isShared() && capacity_ < largeCapacity &&
                          capacity_ >= newLength && newLength > 0;
    if (!reusable) {
        release();
        if (newLength > 0)
            grow(newLength);
    }
}

// Makes room for `count` characters at `pos`, which the caller writes.
void String::openGap(std::size_t pos, std::size_t count) {
    const std::size_t newLength = checkedSum(length_, count);
    if (isShared() || capacity_ < newLength)
        grow(newLength);
    std::memmove(data_ + pos + count, data_ + pos, length_ - pos);
    setLength(newLength);
}

void String::setLength(std::size_t newLength) noexcept {
    length_ = newLength;
    data_[newLength] = '\0';
}

String operator+(const String& a, const String& b) {
    String sum(a);
    sum.append(b);
    return sum;
}

std::uint32_t hashOf(std::string_view text) noexcept {
    std::uint32_t hash = 2166136261U;
    for (const char character : text)
        hash = (hash ^ static_cast<unsigned char>(character)) * 16777619U;
    return hash;
}

}  // namespace corvane
