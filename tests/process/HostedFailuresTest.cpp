// What a run of a child reports when an operation of the system fails, by failures on demand.
#include <gtest/gtest.h>

#include "base/Messages.h"
#include "platform/Platform.h"
#include "platform/hosted/Faults.h"
#include "process/LimitedRun.h"
#include "process/ProcessRunner.h"
#include "support/JavaHome.h"
#include "support/System.h"
#include "support/TestContext.h"

namespace corvane {
namespace {

using hosted::ScopedFault;
using test::failureOf;
using test::text;

TEST(HostedFailuresTest, EachHasItsWords) {
    const test::TestContext context;
    const test::Scratch scratch;
    const String command = "\"" + test::copyTestJava(scratch, "child.exe") + "\" x";
    const std::string words = text(systemErrorText(ERROR_ACCESS_DENIED));
    const std::string noCode = "CreateProcess unable to get exit code for process ==> " + words;
    const struct {
        bool collect;
        const char* operation;
        std::string message;
    } cases[] = {
        {true, "CreatePipe", words},
        {true, "GetExitCodeProcess", noCode},
        {true, "PeekNamedPipe", "PeekNamedPipe failed  ==>  " + words},
        {true, "ReadFile", "ReadFile failed  ==>  " + words},
        {false, "WaitForSingleObject", "CreateProcess unable to wait for completion ==> " + words},
        {false, "GetExitCodeProcess", noCode},
    };
    for (const auto& [collect, operation, message] : cases) {
        const ScopedFault fault(operation, ERROR_ACCESS_DENIED);
        ProcessOptions options;
        options.collect = collect;
        String out;
        EXPECT_EQ(failureOf([&] { runCommand(command, "", options, &out, &out); }), message)
            << operation;
    }
}

// As before Windows 8, where the launcher itself runs in a job.
TEST(HostedFailuresTest, WithoutAJobTheChildAloneIsEnded) {
    const test::TestContext context;
    const test::Scratch scratch;
    const String command = "\"" + test::copyTestJava(scratch, "child.exe") + "\" ";
    const ScopedFault fault("AssignProcessToJobObject", ERROR_ACCESS_DENIED, 0);
    String out;
    EXPECT_EQ(runLimited(command + "x", "", 60'000, out, out).end, LimitedRun::End::byItself);
    EXPECT_EQ(text(out), "[x]");
    EXPECT_EQ(runLimited(command + "--sleep 60000", "", 100, out, out).end,
              LimitedRun::End::outOfTime);
}

}  // namespace
}  // namespace corvane
