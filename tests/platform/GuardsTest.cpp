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
        NumberGuard zero(0);  // 0 is a resource here
        NumberGuard guard(std::move(zero));
        EXPECT_FALSE(zero);  // NOLINT: empty is what a guard is then
        EXPECT_TRUE(guard);
        guard = NumberGuard(1);
        NumberGuard& same = guard;
        guard = std::move(same);
        guard.reset(1);
        EXPECT_EQ(closed, std::vector{0});
        *guard.put() = 2;
        guard.reset(3);
        EXPECT_EQ(guard.release(), 3);
        *guard.put() = 4;
    }
    EXPECT_EQ(closed, (std::vector{0, 1, 2, 4}));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_DISK_FULL});
}

}  // namespace
}  // namespace corvane
