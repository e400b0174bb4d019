// `String`, the one text type of the launcher: a counted, NUL-terminated byte string in the ANSI
// code page whose whole copies share one buffer until one of them changes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corvane {

// A `String` would grow beyond its longest length. Carries no words.
struct LengthException {};

// A position argument lies beyond the text. Carries no words.
struct RangeException {};

// The buffer is one block: a share count byte, `capacity` characters, a terminator. The count reads
// 0 for one owner, n for n + 1 owners, 255 for a frozen buffer (a writable pointer into it was
// handed out, so it is never shared again). Counts are plain bytes: strings that share a buffer
// belong to one thread at a time. Positions are clamped or raise `RangeException` before anything
// changes; a text that would become too long raises `LengthException`, likewise. A pointer to the
// string's own characters is a valid argument everywhere.
class String {
  public:
    // "Not found", and as a count "up to the end".
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

    String() noexcept = default;
    String(const char* text) { assign(text); }  // NOLINT: literals are texts everywhere
    String(const char* text, std::size_t count) { assign(text, count); }
    String(std::size_t count, char character) { assign(count, character); }
    String(const String& other) { assign(other); }
    String(const String& other, std::size_t pos, std::size_t count) { assign(other, pos, count); }
    String(String&& other) noexcept { swap(other); }
    virtual ~String() { release(); }

    String& operator=(const String& other) { return assign(other); }
    String& operator=(String&& other) noexcept;
    String& operator=(const char* text) { return assign(text); }
    void swap(String& other) noexcept;

    std::size_t length() const noexcept { return length_; }
    std::size_t capacity() const noexcept { return capacity_; }
    bool empty() const noexcept { return length_ == 0; }

    // NUL-terminated text, never null; valid until the string changes.
    const char* cstr() const noexcept;
    std::string_view view() const noexcept { return {cstr(), length_}; }

    // Pointer to character `i`, unchecked.
    const char* charAt(std::size_t i) const noexcept { return cstr() + (data_ != nullptr ? i : 0); }
    const char& at(std::size_t i) const;

    // Writable pointer to character `i` (`i` == length gives the terminator). Detaches and freezes
    // the buffer. Beyond the text, or without a buffer: an empty text that must not be written.
    char* mutableAt(std::size_t i);

    // Lowest index >= `pos` of a match, or `npos`. An empty needle matches at `pos` <= length.
    std::size_t find(const char* text, std::size_t pos = 0) const noexcept;
    std::size_t find(const char* text, std::size_t pos, std::size_t count) const noexcept;
    std::size_t find(char character, std::size_t pos = 0) const noexcept;
    std::size_t find(const String& text, std::size_t pos = 0) const noexcept;

    // Highest index <= `pos` of a match, or `npos`. An empty needle gives min(pos, length).
    std::size_t rfind(const char* text, std::size_t pos = npos) const noexcept;
    std::size_t rfind(char character, std::size_t pos = npos) const noexcept;
    std::size_t rfind(const String& text, std::size_t pos = npos) const noexcept;

    // First (last) character at or behind (at or in front of) `pos` that is, or isn't, in `set`.
    std::size_t findFirstOf(const char* set, std::size_t pos = 0) const noexcept;
    std::size_t findLastOf(const char* set, std::size_t pos = npos) const noexcept;
    std::size_t findFirstNotOf(const char* set, std::size_t pos = 0) const noexcept;
    std::size_t findLastNotOf(const char* set, std::size_t pos = npos) const noexcept;

    // Replace the content. A private buffer stays in use only while its capacity is under 32, so
    // that a string doesn't hold on to a large one. A whole non-empty `other` is shared, not
    // copied, unless it is frozen or has 255 owners.
    String& assign(const char* text);
    String& assign(const char* text, std::size_t count);
    String& assign(std::size_t count, char character);
    String& assign(char character) { return assign(std::size_t{1}, character); }
    String& assign(const String& other) { return assign(other, 0, npos); }
    String& assign(const String& other, std::size_t pos, std::size_t count);

    // Makes room for a text of `wanted` characters, so that what is appended up to that length
    // costs no further buffer.
    void reserve(std::size_t wanted);

    // Add to the end.
    String& append(const char* text);
    String& append(const char* text, std::size_t count);
    String& append(char character);
    String& append(const String& other) { return append(other.cstr(), other.length_); }
    String& append(const String& other, std::size_t pos, std::size_t count);
    String& operator+=(const String& other) { return append(other); }
    String& operator+=(const char* text) { return append(text); }
    String& operator+=(char character) { return append(character); }

    String& insert(std::size_t pos, const char* text);
    String& insert(std::size_t pos, const char* text, std::size_t count);

    // Removes a clamped range. A private buffer is kept; one that others share is given up.
    String& erase(std::size_t pos = 0, std::size_t count = npos);

    // Puts the clamped part of `other` in place of the clamped range.
    String& replace(std::size_t pos, std::size_t count, const String& other);
    String& replace(std::size_t pos, std::size_t count, const String& other, std::size_t otherPos,
                    std::size_t otherCount = npos);

    String substr(std::size_t pos = 0, std::size_t count = npos) const;

    // Negative, 0 or positive: bytes compared unsigned, then the shorter text is the smaller.
    int compare(const String& other) const noexcept;
    int compare(const char* text) const noexcept;
    int compare(std::size_t pos, std::size_t count, const String& other) const;
    int compare(std::size_t pos, std::size_t count, const String& other, std::size_t otherPos,
                std::size_t otherCount = npos) const;

  private:
    unsigned char& shareCount() noexcept { return reinterpret_cast<unsigned char*>(data_)[-1]; }
    unsigned char shareCount() const noexcept {
        return reinterpret_cast<const unsigned char*>(data_)[-1];
    }
    bool isShared() const noexcept;
    bool owns(const char* text) const noexcept;
    std::size_t clamped(std::size_t pos, std::size_t count) const;
    void release() noexcept;
    void grow(std::size_t wanted);
    void detach();
    void prepareAssign(std::size_t newLength);
    void openGap(std::size_t pos, std::size_t count);
    void setLength(std::size_t newLength) noexcept;

    char* data_ = nullptr;
    std::size_t length_ = 0;
    std::size_t capacity_ = 0;
};

inline bool operator==(const String& a, const String& b) noexcept {
    return a.view() == b.view();
}
inline bool operator==(const String& a, const char* b) noexcept {
    return a.view() == b;
}

String operator+(const String& a, const String& b);

// A number to find the text by, the same for equal texts.
std::uint32_t hashOf(std::string_view text) noexcept;

}  // namespace corvane
