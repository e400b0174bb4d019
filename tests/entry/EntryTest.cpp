// The entry of the process, run within the test.
#include <gtest/gtest.h>

#include "entry/LauncherMain.h"
#include "platform/Platform.h"
#include "platform/hosted/CommandLine.h"
#include "platform/hosted/Faults.h"
#include "support/Payload.h"

namespace corvane {
namespace {

using hosted::ScopedFault;
using test::text;

class EntryTest : public ::testing::Test {
  protected:
    ~EntryTest() override { SetEnvironmentVariableA("DBGWIN32PPK", nullptr); }

    // Runs the process with a command line; what it printed is in `out`.
    std::int32_t start(const std::string& commandLine) {
        hosted::setCommandLine(commandLine);
        ::testing::internal::CaptureStdout();
        const std::int32_t exitValue = launcherMain();
        out = ::testing::internal::GetCapturedStdout();
        EXPECT_EQ(run.context().ui, nullptr);
        return exitValue;
    }

    test::LauncherRun run;
    std::string out;
};

TEST_F(EntryTest, TheExitValueIsTheRunsOrMinusOne) {
    EXPECT_EQ(start("launcher -console -cv:version"), 0);
    EXPECT_NE(out, "");
    const ScopedFault noArguments("CommandLineToArgvW", ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(start("launcher -console -cv:version"), -1);
    EXPECT_EQ(out, "");
}

TEST_F(EntryTest, TheDebugLogBeginsWithTheStartUnlessItsNameIsTooLong) {
    SetEnvironmentVariableA("DBGWIN32PPK", run.scratch.path(std::string(250, 'd')).cstr());
    EXPECT_EQ(start("launcher -console -cv:version"), 0);
    EXPECT_EQ(text(run.context().debugLogPath), "");
    SetEnvironmentVariableA("DBGWIN32PPK", run.scratch.path("debug").cstr());
    start("launcher -console -cv:version");
    EXPECT_EQ(run.scratch.read("debug"), "Console Launcher Started\n");
}

}  // namespace
}  // namespace corvane
