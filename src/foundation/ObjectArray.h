// `ObjectArray`, the growable array of owned objects behind every list of the launcher, and the
// typed lists over it.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>

namespace corvane {

// Root of all list elements.
class ListItem {
  public:
    ListItem() = default;
    ListItem(const ListItem&) = delete;
    ListItem& operator=(const ListItem&) = delete;
    virtual ~ListItem() = default;
};

// Owns its elements. A slot may hold null. Grows in steps of 30 slots and never gives slots back.
// What takes or gives elements without their type is for the typed lists alone.
class ObjectArray {
  public:
    ObjectArray() = default;
    ObjectArray(const ObjectArray&) = delete;
    ObjectArray& operator=(const ObjectArray&) = delete;
    virtual ~ObjectArray();

    std::int32_t count() const noexcept { return count_; }

    // Destroys the element and closes the gap; out of range does nothing.
    void removeAt(std::int32_t index);

    void clear() { setCapacity(0); }

    // Doubles the room of a list that is full. For lists that may grow to millions of items, which
    // the usual step would copy again and again.
    void makeRoom() {
        if (count_ == capacity_)
            setCapacity(2 * capacity_);
    }

  protected:
    std::int32_t capacity() const noexcept { return capacity_; }

    // The element, still the array's; null when `index` is out of range.
    ListItem* at(std::int32_t index) const noexcept;

    // Takes `item` in front of `position`; a negative position (-1) appends. A position at or
    // beyond the end is ignored, and the item stays the caller's.
    void insert(std::int32_t position, std::unique_ptr<ListItem>&& item);

    // Makes room for `newCapacity` elements, rounded up to whole steps. A smaller number destroys
    // the elements from that index on and keeps the storage.
    void setCapacity(std::int32_t newCapacity);

    ListItem* const* firstSlot() const noexcept { return items_; }
    ListItem* const* endSlot() const noexcept { return items_ + count_; }

  private:
    static constexpr std::int32_t chunk = 30;

    ListItem** items_ = nullptr;
    std::int32_t count_ = 0;
    std::int32_t capacity_ = 0;
};

// Steps through the slots of a list whose elements are all `Item`s, and shows of each the `Object`
// (const or not) that the list is a list of.
template <class Item, class Object>
class ItemIterator {
  public:
    explicit ItemIterator(ListItem* const* slot) noexcept : slot_(slot) {}

    Object& operator*() const noexcept { return static_cast<Item*>(*slot_)->object(); }
    ItemIterator& operator++() noexcept {
        ++slot_;
        return *this;
    }
    bool operator==(const ItemIterator&) const noexcept = default;

  private:
    ListItem* const* slot_;
};

// An element that owns one payload.
template <class Payload>
class PayloadItem final : public ListItem {
  public:
    explicit PayloadItem(std::unique_ptr<Payload> payload) : payload_(std::move(payload)) {}

    Payload& object() const noexcept { return *payload_; }

  private:
    const std::unique_ptr<Payload> payload_;
};

// A list that owns objects of one type and holds no null. A const list shows const objects.
template <class Payload>
class ListOf : public ObjectArray {
    using Item = PayloadItem<Payload>;

  public:
    using Iterator = ItemIterator<Item, Payload>;
    using ConstIterator = ItemIterator<Item, const Payload>;

    // Appends `payload` and gives it back, still the list's.
    Payload* add(std::unique_ptr<Payload> payload) {
        Payload* const added = payload.get();
        insert(-1, std::make_unique<Item>(std::move(payload)));
        return added;
    }

    // The object, still the list's; null when `index` is out of range.
    Payload* at(std::int32_t index) noexcept { return objectAt(index); }
    const Payload* at(std::int32_t index) const noexcept { return objectAt(index); }

    Iterator begin() noexcept { return Iterator(firstSlot()); }
    Iterator end() noexcept { return Iterator(endSlot()); }
    ConstIterator begin() const noexcept { return ConstIterator(firstSlot()); }
    ConstIterator end() const noexcept { return ConstIterator(endSlot()); }

  private:
    Payload* objectAt(std::int32_t index) const noexcept {
        const auto* const item = static_cast<const Item*>(ObjectArray::at(index));
        return item == nullptr ? nullptr : &item->object();
    }
};

}  // namespace corvane
