// The log file and the debug log.
#include <gtest/gtest.h>

#include "base/DebugLog.h"
#include "base/Log.h"
#include "support/Scratch.h"
#include "support/TestContext.h"

namespace corvane {
namespace {

TEST(LogTest, LevelsAndOneSeparatorPerProcess) {
    const test::Scratch scratch;
    {
        test::TestContext run;
        logMessage("lost, there is no log yet");
        run.context.logFile = scratch.path("missing\\a.log");
        logMessage("lost, and the separator is still to come");
        run.context.logFile = scratch.path("a.log");
        logMessage("plain");
        logMessage("careful", LogLevel::warning);
        logMessage("two\nlines", LogLevel::error);
    }
    test::TestContext second;
    second.context.logFile = scratch.path("a.log");
    logMessage("50% of a second run");
    EXPECT_EQ(scratch.readText("a.log"),
              "------------------\nplain\nWARNING: careful\nERROR: two\nlines\n"
              "------------------\n50% of a second run\n");
}

TEST(DebugLogTest, WritesOnlyWithAPath) {
    const test::Scratch scratch;
    test::TestContext run;
    run.context.debugLogEnabled = true;
    debugLogLine("nowhere");
    run.context.debugLogPath = scratch.path("d.log");
    debugLogLine("one");
    debugLogLine("line%d");
    EXPECT_EQ(scratch.readText("d.log"), "one\nline%d\n");
}

}  // namespace
}  // namespace corvane
