// The owners of handles: what is closed when, and that the last error outlives it.
#include <gtest/gtest.h>

#include <vector>

#include "platform/Guards.h"

namespace corvane {
namespace {

std::vector<int> closed;

// A resource that notes its end and spoils the last error on the way.
struct NumberPolicy {
    using Value = int;
    static Value none() noexcept { return -1; }
    static void close(Value number) noexcept {
        closed.push_back(number);
        SetLastError(ERROR_INVALID_HANDLE);
    }
};
using NumberGuard = Guard<NumberPolicy>;

class GuardTest : public ::testing::Test {
  protected:
    GuardTest() { closed.clear(); }
};

TEST_F(GuardTest, ClosesOnceAtTheEndOfTheScope) {
    {
        NumberGuard empty;
        NumberGuard zero(0);  // 0 is a resource here
        EXPECT_FALSE(empty);
        EXPECT_TRUE(zero);
        NumberGuard moved(std::move(zero));
        EXPECT_EQ(moved.get(), 0);
        EXPECT_TRUE(closed.empty());
    }
    EXPECT_EQ(closed, std::vector{0});
}

TEST_F(GuardTest, AssignmentOntoAFullOwnerClosesTheOldResource) {
    NumberGuard target(1);
    target = NumberGuard(2);
    EXPECT_EQ(closed, std::vector{1});
    EXPECT_EQ(target.get(), 2);
    NumberGuard& same = target;
    target = std::move(same);
    EXPECT_EQ(target.get(), 2);
    target = NumberGuard();
    EXPECT_EQ(closed, (std::vector{1, 2}));
}

TEST_F(GuardTest, ResetPutAndRelease) {
    NumberGuard guard(1);
    guard.reset(1);
    EXPECT_TRUE(closed.empty());
    *guard.put() = 2;
    guard.reset(3);
    EXPECT_EQ(closed, (std::vector{1, 2}));
    EXPECT_EQ(guard.release(), 3);
    EXPECT_FALSE(guard);
    guard.reset();
    EXPECT_EQ(closed.size(), 2u);
}

TEST_F(GuardTest, ClosingKeepsTheLastError) {
    NumberGuard guard(1);
    SetLastError(ERROR_DISK_FULL);
    guard.reset();
    EXPECT_EQ(GetLastError(), DWORD{ERROR_DISK_FULL});
}

TEST_F(GuardTest, EachKindKnowsItsEmptyValue) {
    EXPECT_FALSE(HandleGuard(nullptr));
    EXPECT_FALSE(FileGuard(INVALID_HANDLE_VALUE));
    EXPECT_FALSE(FindGuard(INVALID_HANDLE_VALUE));
    EXPECT_FALSE(KeyGuard(nullptr));
    EXPECT_FALSE(LocalGuard(nullptr));
    EXPECT_FALSE(StreamGuard(nullptr));
}

}  // namespace
}  // namespace corvane
