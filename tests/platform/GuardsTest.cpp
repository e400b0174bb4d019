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

TEST(Guard, ClosesEachResourceOnceAndKeepsTheLastError) {
    closed.clear();
    SetLastError(ERROR_DISK_FULL);
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
    EXPECT_EQ(GetLastError(), DWORD{ERROR_DISK_FULL});
}

TEST(Guard, AssignmentResetPutAndRelease) {
    closed.clear();
    NumberGuard guard(1);
    guard = NumberGuard(2);
    EXPECT_EQ(closed, std::vector{1});
    NumberGuard& same = guard;
    guard = std::move(same);
    guard.reset(2);
    EXPECT_EQ(guard.get(), 2);
    *guard.put() = 3;
    guard.reset(4);
    EXPECT_EQ(closed, (std::vector{1, 2, 3}));
    EXPECT_EQ(guard.release(), 4);
    guard = NumberGuard();
    EXPECT_EQ(closed.size(), 3u);
}

TEST(Guard, EachKindKnowsItsEmptyValue) {
    EXPECT_FALSE(HandleGuard(nullptr));
    EXPECT_FALSE(FileGuard(INVALID_HANDLE_VALUE));
    EXPECT_FALSE(FindGuard(INVALID_HANDLE_VALUE));
    EXPECT_FALSE(KeyGuard(nullptr));
}

}  // namespace
}  // namespace corvane
