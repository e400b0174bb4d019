// `ObjectArray`: slots and ownership.
#include "foundation/ObjectArray.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace corvane {

ObjectArray::~ObjectArray() {
    clear();
    std::free(items_);
}

ListItem* ObjectArray::at(std::int32_t index) const noexcept {
    return index < 0 || index >= count_ ? nullptr : items_[index];
}

void ObjectArray::insert(std::int32_t position, std::unique_ptr<ListItem>&& item) {
    if (position < 0)
        position = count_;
    else if (position >= count_)
        return;
    if (capacity_ < count_ + 1)
        setCapacity(capacity_ + chunk);
    std::copy_backward(items_ + position, items_ + count_, items_ + count_ + 1);
    items_[position] = item.release();
    ++count_;
}

void ObjectArray::removeAt(std::int32_t index) {
    if (index < 0 || index >= count_)
        return;
    delete items_[index];
    std::copy(items_ + index + 1, items_ + count_, items_ + index);
    --count_;
}

void ObjectArray::setCapacity(std::int32_t newCapacity) {
    if (newCapacity > capacity_) {
        const std::int32_t rounded = (newCapacity + chunk - 1) / chunk * chunk;
        // An allocator that can extend a block in place spares a long list most of its copies.
        void* const slots =
            std::realloc(items_, static_cast<std::size_t>(rounded) * sizeof(ListItem*));
        if (slots == nullptr)
            throw std::bad_alloc();
        items_ = static_cast<ListItem**>(slots);
        std::fill(items_ + capacity_, items_ + rounded, nullptr);
        capacity_ = rounded;
    }
    const std::int32_t kept = std::clamp(newCapacity, 0, count_);
    std::for_each(items_ + kept, items_ + count_, [](ListItem* item) { delete item; });
    count_ = kept;
}

}  // namespace corvane
