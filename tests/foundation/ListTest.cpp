// `ObjectArray`, the typed lists and `StringList`, `Owned`.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "foundation/ObjectArray.h"
#include "foundation/Owned.h"
#include "foundation/StringList.h"

namespace corvane {
namespace {

// Notes its destruction.
class Tracked final : public ListItem {
  public:
    Tracked(int id, std::vector<int>& destroyed) : id_(id), destroyed_(destroyed) {}
    ~Tracked() override { destroyed_.push_back(id_); }

  private:
    int id_;
    std::vector<int>& destroyed_;
};

// What the typed lists make of it isn't in the way here.
struct OpenArray final : ObjectArray {
    using ObjectArray::at;
    using ObjectArray::capacity;
    using ObjectArray::insert;
    using ObjectArray::setCapacity;
};

class ObjectArrayTest : public ::testing::Test {
  protected:
    void add(int id) { array.insert(-1, std::make_unique<Tracked>(id, destroyed)); }

    std::vector<int> destroyed;
    OpenArray array;
};

TEST_F(ObjectArrayTest, GrowsInStepsOf30) {
    EXPECT_EQ(array.capacity(), 0);
    for (int i = 0; i < 31; ++i) {
        add(i);
        EXPECT_EQ(array.capacity(), i < 30 ? 30 : 60);
    }
    array.setCapacity(61);
    EXPECT_EQ(array.capacity(), 90);
    EXPECT_EQ(array.count(), 31);
    EXPECT_TRUE(destroyed.empty());
}

TEST_F(ObjectArrayTest, PositionsAtOrBeyondTheEndLeaveTheItemWithTheCaller) {
    std::unique_ptr<ListItem> item = std::make_unique<Tracked>(1, destroyed);
    array.insert(0, std::move(item));
    EXPECT_NE(item, nullptr);
    EXPECT_EQ(array.count(), 0);
    array.insert(-1, std::move(item));
    EXPECT_EQ(item, nullptr);
    ListItem* const first = array.at(0);
    array.insert(0, nullptr);
    EXPECT_EQ(array.at(0), nullptr) << "a null slot in front";
    EXPECT_EQ(array.at(1), first);
    EXPECT_EQ(array.at(2), nullptr);
    EXPECT_EQ(array.at(-1), nullptr);
}

TEST_F(ObjectArrayTest, RemovesAndShrinksInOrder) {
    for (int i = 0; i < 5; ++i)
        add(i);
    array.removeAt(-1);
    array.removeAt(5);
    EXPECT_TRUE(destroyed.empty());
    array.removeAt(1);
    EXPECT_EQ(array.at(4), nullptr) << "what stood there before";
    array.setCapacity(2);
    EXPECT_EQ(array.count(), 2);
    EXPECT_EQ(array.capacity(), 30);
    EXPECT_EQ(destroyed, (std::vector<int>{1, 3, 4}));
    array.setCapacity(-1);
    EXPECT_EQ(destroyed, (std::vector<int>{1, 3, 4, 0, 2}));
}

TEST(StringListTest, MissingElementsReadEmpty) {
    StringList list;
    EXPECT_TRUE(list.last().empty());
    list.add("a");
    list.add("b");
    EXPECT_TRUE(list.at(0) == "a" && list.last() == "b");
    EXPECT_TRUE(list.at(2).empty() && list.at(-1).empty());
    EXPECT_TRUE(list.contains("b"));
    EXPECT_FALSE(list.contains("c"));
}

struct Base {
    explicit Base(int& destructions) : counter(destructions) {}
    int& counter;
};

struct Derived : Base {
    using Base::Base;
    ~Derived() { ++counter; }
};

TEST(OwnedTest, DestroysUnderTheTypeItWasMadeWith) {
    int destructions = 0;
    {
        const Owned<Base> held = makeOwnedAs<Base, Derived>(destructions);
        Owned<Derived> replaced = makeOwned<Derived>(destructions);
        replaced = makeOwned<Derived>(destructions);
        EXPECT_EQ(destructions, 1);
    }
    EXPECT_EQ(destructions, 3);
}

}  // namespace
}  // namespace corvane
