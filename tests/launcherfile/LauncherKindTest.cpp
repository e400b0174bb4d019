// The search for the trailer.
#include <gtest/gtest.h>

#include "launcherfile/LauncherKind.h"
#include "support/Payload.h"

namespace corvane {
namespace {

using test::failureOf;

const std::string mark = "\xCA\x82\xCA\x82";

class LauncherKindTest : public ::testing::Test {
  protected:
    std::int32_t kindOf(const std::string& bytes) {
        return launcherKind(run.scratch.write("f", bytes).cstr());
    }

    test::LauncherRun run;
};

TEST_F(LauncherKindTest, FindsTheTrailerWhereverItIs) {
    const std::string launcher = test::launcherBytes(2, {});
    for (const std::size_t behind :
         {std::size_t{0}, std::size_t{1}, std::size_t{3}, std::size_t{100}, std::size_t{65530},
          std::size_t{65532}, std::size_t{65533}, std::size_t{65536}, std::size_t{200000}}) {
        EXPECT_EQ(kindOf(launcher + std::string(behind, 'x')), 2) << behind;
        EXPECT_EQ(run.context().trailerOffset, -static_cast<std::int32_t>(behind));
    }
    // The last mark counts, also when another overlaps its front.
    EXPECT_EQ(kindOf(launcher +
                     "\x07"
                     "12\xCA\x82" +
                     mark),
              7);
    EXPECT_EQ(run.context().trailerOffset, 0);
}

TEST_F(LauncherKindTest, WithoutATrailerTheNinthByteFromTheEndAnswers) {
    EXPECT_EQ(kindOf("0123456789"), '1');
    EXPECT_EQ(kindOf(std::string(100000, 'q')), 'q');
    EXPECT_EQ(run.context().trailerOffset, 0);
    EXPECT_EQ(kindOf("12345678"), -1);
    EXPECT_EQ(kindOf(mark + "12345678"), -1) << "nothing stands in front of the mark";
    EXPECT_EQ(kindOf("abc" + mark), -1);
    for (const char* tooShort : {"", "123", "1234", "1234567"}) {
        EXPECT_EQ(failureOf([&] { kindOf(tooShort); }),
                  "Unable to read launcher identification value.")
            << tooShort;
    }
    EXPECT_EQ(launcherKind(run.scratch.path("missing").cstr()), -1);
}

TEST_F(LauncherKindTest, RemembersTheAnswerForTheLauncherAlone) {
    run.useLauncher(test::launcherBytes(1, {}));
    const String own = run.context().launcherPath;
    EXPECT_EQ(launcherKind(own.cstr()), 1);
    run.scratch.write("setup.exe", test::launcherBytes(5, {}));
    EXPECT_EQ(launcherKind(own.cstr()), 1);
    EXPECT_EQ(kindOf(test::launcherBytes(7, {})), 7);
    EXPECT_EQ(kindOf(test::launcherBytes(8, {})), 8);
}

}  // namespace
}  // namespace corvane
