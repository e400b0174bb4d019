// Child processes, with and without pipes.
#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <thread>

#include "base/Messages.h"
#include "platform/Platform.h"
#include "process/LimitedRun.h"
#include "process/ProcessRunner.h"
#include "support/JavaHome.h"
#include "support/System.h"
#include "support/TestContext.h"
#include "support/Wait.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;

class ProcessRunnerTest : public ::testing::Test {
  protected:
    // Runs the test program with its streams collected.
    std::uint32_t collect(const std::string& arguments, const String& directory = "") {
        ProcessOptions options;
        options.collect = true;
        return runCommand(program + " " + arguments.c_str(), directory, options, &out, &err);
    }
    std::uint32_t plain(const std::string& arguments, bool wait = true) {
        ProcessOptions options;
        options.waitForCompletion = wait;
        return runCommand(program + " " + arguments.c_str(), "", options);
    }

    test::TestContext run;
    test::Scratch scratch;
    String program = "\"" + test::copyTestJava(scratch, "dir with blank\\child.exe") + "\"";
    String out = "before|";
    String err;
    std::optional<test::NoPauses> noPauses{std::in_place};
};

TEST_F(ProcessRunnerTest, CollectsBothStreamsBehindWhatIsThere) {
    EXPECT_EQ(collect("--err oops --exit 3 \"a b\" last"), 3u);
    EXPECT_EQ(text(out), "before|[a b][last]");
    EXPECT_EQ(text(err), "oops");
    EXPECT_GE(run.ui.steps, 2);
}

TEST_F(ProcessRunnerTest, AChildThatHasEndedIsGivenAMoment) {
    noPauses.reset();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(collect("--touch here x", scratch.path("dir with blank")), 0u);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(600));
    EXPECT_EQ(text(out), "before|[x]");
    EXPECT_TRUE(scratch.exists("dir with blank\\here")) << "it works in its directory";
}

TEST(CollectedOutputTest, KeepsTheFrontAndTheEndOfTooMuch) {
    constexpr std::size_t half = std::size_t{32} << 20;
    const std::string piece = "0123456789abcdefghijklmnopqrstu";
    CollectedOutput output;
    std::string all;
    while (all.size() < 2 * half) {
        const std::string next = piece.substr(0, std::min(piece.size(), 2 * half - all.size()));
        output.add(next.data(), next.size());
        all += next;
    }
    String kept = "before|";
    output.appendTo(kept);
    EXPECT_TRUE(kept.view() == "before|" + all) << "64 MB are kept whole";
    for (int i = 0; i < 100'000; ++i) {
        output.add(piece.data(), piece.size());
        all += piece;
    }
    String cut;
    output.appendTo(cut);
    EXPECT_TRUE(cut.view() == all.substr(0, half) +
                                  "\n[... 3100000 bytes are left out here ...]\n" +
                                  all.substr(all.size() - half));
}

TEST_F(ProcessRunnerTest, AFloodArrivesWholeAndInOrder) {
    collect("--write 300000 --write-err 200000 x");
    EXPECT_EQ(out.length(), 7 + 300000 + 3u);
    EXPECT_EQ(err.length(), 200000u);
    EXPECT_EQ(text(out.substr(7 + 26 * 1000, 26)), "abcdefghijklmnopqrstuvwxyz");
    // A block's text ends at its first NUL, and what is collected goes behind it.
    out = "before|";
    collect("--nul two");
    EXPECT_EQ(text(out), "before|one");
}

TEST_F(ProcessRunnerTest, ALimitEndsWhatGoesBeyondIt) {
    noPauses.reset();
    using End = LimitedRun::End;
    constexpr std::uint64_t minute = 60'000;
    const struct {
        const char* arguments;
        std::uint64_t limit;
        End end;
        const char* err;
    } cases[] = {
        {"--err oops --exit 3 x", minute, End::byItself, "oops"},
        {"--write 1000000 x", minute, End::byItself, ""},
        {"--write 1200000 --sleep 60000 x", minute, End::tooMuchOutput, ""},
        {"--err oops --sleep 60000 x", 500, End::outOfTime, "oops"},
        // Whoever waits for the pipes to break waits for the grandchild.
        {"--again \"--err oops --sleep 60000\" x", 800, End::outOfTime, "oops"},
    };
    for (const auto& [arguments, limit, end, errorText] : cases) {
        err = "";
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(runLimited(program + " " + arguments, "", limit, out, err).end, end) << arguments;
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
        EXPECT_EQ(text(err), errorText) << arguments;
    }
    const LimitedRun none = runLimited(scratch.path("none.exe"), "", minute, out, err);
    EXPECT_EQ(none.end, End::notStarted);
    EXPECT_EQ(text(none.failure),
              "CreateProcess failed  ==>  " +
                  text(systemErrorText(ERROR_FILE_NOT_FOUND, scratch.path("none.exe"))));
}

TEST_F(ProcessRunnerTest, ACancelEndsALimitedRun) {
    std::chrono::steady_clock::time_point canceled;
    std::thread user([&] {
        test::waitFor([&] { return scratch.exists("started"); });
        canceled = std::chrono::steady_clock::now();
        run.context.cancelRequested.request();
    });
    const String line = program + " --touch \"" + scratch.path("started") + "\" --sleep 60000 x";
    EXPECT_EQ(runLimited(line, "", 50'000, out, err).end, LimitedRun::End::canceled);
    const auto end = std::chrono::steady_clock::now();
    user.join();
    EXPECT_LT(end - canceled, std::chrono::milliseconds(200));
    EXPECT_EQ(runLimited(line, "", 50'000, out, err).end, LimitedRun::End::canceled);
}

TEST_F(ProcessRunnerTest, PlainRunsWaitOrDoNot) {
    EXPECT_EQ(plain("--exit 7 x"), 7u);
    EXPECT_EQ(plain("--exit 7 x", false), 0u);
    EXPECT_EQ(run.ui.steps, 0);
}

TEST_F(ProcessRunnerTest, FailuresCarryTheSystemsWords) {
    const std::string words = "CreateProcess failed  ==>  ";
    EXPECT_EQ(failureOf([&] { runCommand(scratch.path("none.exe"), "", ProcessOptions{}); }),
              words + text(systemErrorText(ERROR_FILE_NOT_FOUND)));
    EXPECT_EQ(failureOf([&] { collect("x", scratch.path("no such directory")); }),
              words + text(systemErrorText(ERROR_DIRECTORY)));
}

}  // namespace
}  // namespace corvane
