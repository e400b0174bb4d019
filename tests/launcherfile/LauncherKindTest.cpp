// The search for the trailer.
#include <gtest/gtest.h>

#include <vector>

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
    std::vector<int> distances = {65530, 65532, 65533, 65536, 65600, 200000};
    for (int behind = 0; behind < 140; ++behind)
        distances.push_back(behind);
    for (const int behind : distances) {
        EXPECT_EQ(kindOf(launcher + std::string(static_cast<std::size_t>(behind), 'x')), 2)
            << behind;
        EXPECT_EQ(run.context().trailerOffset, -behind);
    }
    // The last mark counts, also when another overlaps its front.
    EXPECT_EQ(kindOf(launcher + "\x07" + "12\xCA\x82" + mark), 7);
    EXPECT_EQ(run.context().trailerOffset, 0);
}

TEST_F(LauncherKindTest, WithoutATrailerTheNinthByteFromTheEndAnswers) {
    EXPECT_EQ(kindOf("0123456789"), '1');
    EXPECT_EQ(kindOf(std::string(100000, 'q')), 'q');
    EXPECT_EQ(run.context().trailerOffset, 0);
    for (const std::string& noNinth : {std::string("12345678"), "abc" + mark, mark + "12345678"})
        EXPECT_EQ(kindOf(noNinth), -1) << noNinth;
    for (const char* tooShort : {"", "123", "1234", "1234567"})
        EXPECT_EQ(failureOf([&] { kindOf(tooShort); }),
                  "Unable to read launcher identification value.");
    EXPECT_EQ(launcherKind(run.scratch.path("missing").cstr()), -1);
}

TEST_F(LauncherKindTest, RemembersTheAnswerForTheLauncherAlone) {
    run.useLauncher(test::launcherBytes(1, {}));
    const String own = run.context().launcherPath;
    EXPECT_EQ(launcherKind(own.cstr()), 1);
    run.scratch.write("setup.exe", test::launcherBytes(5, {}));
    EXPECT_EQ(launcherKind(own.cstr()), 1);
    EXPECT_EQ(kindOf(test::launcherBytes(8, {})), 8);
    EXPECT_FALSE(isToolLauncher(run.scratch.path("none").cstr()));
}

}  // namespace
}  // namespace corvane
