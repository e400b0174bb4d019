// `StringList`: a list of owned texts in which a missing element reads as the empty text.
#pragma once

#include "foundation/ObjectArray.h"
#include "foundation/String.h"

namespace corvane {

// An element that owns one text.
class StringItem final : public ListItem {
  public:
    explicit StringItem(const String& text) : text_(text) {}

    const String& object() const noexcept { return text_; }

  private:
    const String text_;
};

class StringList : public ObjectArray {
  public:
    using Iterator = ItemIterator<StringItem, const String>;

    // Appends a copy, which shares the text's buffer.
    void add(const String& text);

    // The text at `index`; an empty one when there is none.
    const String& at(std::int32_t index) const noexcept;
    const String& last() const noexcept { return at(count() - 1); }

    // Whether the very text is in the list, byte for byte.
    bool contains(const String& text) const noexcept;

    Iterator begin() const noexcept { return Iterator(firstSlot()); }
    Iterator end() const noexcept { return Iterator(endSlot()); }
};

}  // namespace corvane
