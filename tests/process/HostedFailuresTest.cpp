// What a run of a child reports when an operation of the system fails, by failures on demand.
#include <gtest/gtest.h>

#include "app/base/Messages.h"
#include "launch/process/ProcessRunner.h"
#include "platform/Platform.h"
#include "platform/hosted/Faults.h"
#include "support/JavaHome.h"
#include "support/System.h"
#include "support/TestContext.h"

namespace corvane {
namespace {

using hosted::ScopedFault;
using test::failureOf;
using test::text;

class HostedFailuresTest : public ::testing::Test {
  protected:
    std::uint32_t run(bool collect, const String& arguments) {
        ProcessOptions options;
        options.collect = collect;
        return runCommand(program + " " + arguments, "", options, &out, &err);
    }

    test::TestContext context;
    test::Scratch scratch;
    String program = "\"" + test::copyTestJava(scratch, "child.exe") + "\"";
    String out;
    String err;
};

TEST_F(HostedFailuresTest, EachHasItsWords) {
    const std::string words = text(systemErrorText(ERROR_ACCESS_DENIED));
    const struct {
        bool collect;
        const char* operation;
        int call;
        std::string message;
    } cases[] = {
        {true, "CreatePipe", 1, words},
        {true, "CreatePipe", 2, words},
        {true, "CreateProcessA", 1, "CreateProcess failed  ==>  " + words},
        {true, "GetExitCodeProcess", 1,
         "CreateProcess unable to get exit code for process ==> " + words},
        {true, "PeekNamedPipe", 1, "PeekNamedPipe failed  ==>  " + words},
        {true, "ReadFile", 1, "ReadFile failed  ==>  " + words},
        {false, "WaitForSingleObject", 1,
         "CreateProcess unable to wait for completion ==> " + words},
        {false, "GetExitCodeProcess", 1,
         "CreateProcess unable to get exit code for process ==> " + words},
    };
    for (const auto& [collect, operation, call, message] : cases) {
        const ScopedFault fault(operation, ERROR_ACCESS_DENIED, call);
        EXPECT_EQ(failureOf([&, collects = collect] { run(collects, "x"); }), message)
            << operation << " " << call;
    }
}

TEST_F(HostedFailuresTest, AReadThatMeetsABrokenPipeTakesNothing) {
    const test::NoPauses noPauses;
    const ScopedFault fault("ReadFile", ERROR_BROKEN_PIPE, 1);
    EXPECT_EQ(run(true, "x"), 0u);
    EXPECT_LE(out.length(), 3u);
    EXPECT_GE(context.ui.steps, 1) << "it ticks all the same";
}

}  // namespace
}  // namespace corvane
