// The command line, as either character interface gives it.
#include <gtest/gtest.h>

#include "driver/ArgumentVector.h"
#include "support/TestContext.h"

namespace corvane {
namespace {

TEST(ArgumentVectorTest, BothPathsReadThisProcess) {
    test::TestContext run;
    ArgumentVector wide;
    wide.build();
    ASSERT_GE(wide.count(), 1);
    EXPECT_EQ(wide.at(-1), nullptr);
    EXPECT_EQ(wide.at(wide.count()), nullptr);
    run.context.win9xFamily = true;
    ArgumentVector ansi;
    ansi.build();
    ASSERT_EQ(ansi.count(), wide.count());
    for (std::int32_t i = 0; i < wide.count(); ++i)
        EXPECT_STREQ(ansi.at(i), wide.at(i));
}

}  // namespace
}  // namespace corvane
