// `StringList`: adding, and the answer for a missing element.
#include "foundation/StringList.h"

namespace corvane {

namespace {

const String missing;

}  // namespace

void StringList::add(const String& text) {
    insert(-1, std::make_unique<StringItem>(text));
}

const String& StringList::at(std::int32_t index) const noexcept {
    const auto* const item = static_cast<const StringItem*>(ObjectArray::at(index));
    return item == nullptr ? missing : item->object();
}

bool StringList::contains(const String& text) const noexcept {
    for (const String& element : *this) {
        if (element == text)
            return true;
    }
    return false;
}

}  // namespace corvane
