// What callers rely on with children and pipes, on Windows and on its stand-in alike.
#include <gtest/gtest.h>

#include "Testing.h"
#include "support/Wait.h"

namespace corvane {
namespace {

using namespace corvane::testing;

DWORD exitCode(const Child& child) {
    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeProcess(child.process.get(), &code));
    return code;
}

TEST(Processes, OutputsAndExitCodeComeThrough) {
    const ChildResult result = runChild("--write 300000 --write-err 200000");
    EXPECT_EQ(result.out.size(), 300000u);
    EXPECT_EQ(result.err.size(), 200000u);
    EXPECT_EQ(result.out.substr(24, 4), "yzab");
    EXPECT_EQ(runChild("--exit 255").exitCode, 255u);
}

TEST(Processes, ArgumentsAreSplitByTheRuntimesRules) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"a  b\tc ", "[a][b][c]"},
        {R"("a b" c"d e"f "" x)", "[a b][cd ef][][x]"},
        {R"(\"q\" "\"" a\b \\c\ "d\\" e "a\\\"b")", R"(["q"]["][a\b][\\c\][d\][e][a\"b])"},
        {R"("open end)", "[open end]"}};
    for (const auto& [line, arrives] : cases)
        EXPECT_EQ(runChild(line).out, arrives) << line;
}

TEST(Processes, EnvironmentAndDirectoryReachTheChild) {
    const Scratch scratch;
    const ScopedVariable variable("CORVANE_TEST_VALUE", "a b;c");
    EXPECT_EQ(runChild("--env CORVANE_TEST_VALUE").out, "{a b;c}");
    SetEnvironmentVariableA("CORVANE_TEST_VALUE", nullptr);
    EXPECT_EQ(runChild("--env CORVANE_TEST_VALUE").out, "{(unset)}");
    EXPECT_EQ(runPiped(childLine("--touch here"), scratch.path().c_str()).error, DWORD{NO_ERROR});
    EXPECT_TRUE(scratch.exists("here"));
}

TEST(Processes, ProgramsThatCantStartFailInTheCall) {
    const Scratch scratch;
    const std::string text = scratch.file("text.exe", "certainly no program, but text\n");
    makeExecutable(text.c_str());
    scratch.directory("folder");
    const std::pair<std::string, DWORD> programs[] = {{"corvane-no-such-program x", 2},
                                                      {scratch.path("no.exe"), 2},
                                                      {inQuotes(scratch.path("no no.exe")), 2},
                                                      {inQuotes(scratch.path("folder")), 5},
                                                      {text, 193}};
    for (const auto& [line, code] : programs)
        EXPECT_EQ(runPiped(line).error, code) << line;
    for (const std::string& directory : {scratch.path("no"), text, std::string("Q:\\")})
        EXPECT_EQ(runPiped(childLine("--exit 0"), directory.c_str()).error, DWORD{ERROR_DIRECTORY});
}

TEST(Processes, WaitingAndStillActive) {
    const Child child = start(childLine("--sleep 400"));
    EXPECT_EQ(exitCode(child), DWORD{STILL_ACTIVE});
    EXPECT_EQ(WaitForSingleObject(child.process.get(), 10), DWORD{WAIT_TIMEOUT});
    const Child ended = start(childLine("--sleep 30000"));
    EXPECT_TRUE(TerminateProcess(ended.process.get(), 9));
    EXPECT_EQ(WaitForSingleObject(ended.process.get(), 10'000), DWORD{WAIT_OBJECT_0});
    EXPECT_EQ(exitCode(ended), 9u);
    EXPECT_EQ(WaitForSingleObject(child.process.get(), INFINITE), DWORD{WAIT_OBJECT_0});
    EXPECT_EQ(WaitForSingleObject(child.thread.get(), 0), DWORD{WAIT_OBJECT_0});
    EXPECT_EQ(exitCode(child), 0u);
    // Only a wait tells a child that ended with 259 from one that runs. The host cuts it to a byte.
    const Child odd = start(childLine("--exit 259"));
    EXPECT_EQ(WaitForSingleObject(odd.process.get(), INFINITE), DWORD{WAIT_OBJECT_0});
    EXPECT_EQ(exitCode(odd) & 0xFF, 259u & 0xFF);
}

TEST(Processes, SuspendedChildWaitsForItsThread) {
    const Scratch scratch;
    const Child child =
        start(childLine("--touch " + inQuotes(scratch.path("mark"))), CREATE_SUSPENDED);
    EXPECT_EQ(WaitForSingleObject(child.process.get(), 200), DWORD{WAIT_TIMEOUT});
    EXPECT_FALSE(scratch.exists("mark"));
    EXPECT_EQ(ResumeThread(child.thread.get()), 1u);
    EXPECT_EQ(WaitForSingleObject(child.process.get(), INFINITE), DWORD{WAIT_OBJECT_0});
    EXPECT_TRUE(scratch.exists("mark"));
    EXPECT_EQ(ResumeThread(child.thread.get()), 0u);
}

TEST(Processes, AJobEndsTheChildAndWhatItHasStarted) {
    for (const bool byItsHandle : {false, true}) {
        HandleGuard job(CreateJobObjectA(nullptr, nullptr));
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
        limits.BasicLimitInformation.LimitFlags =
            byItsHandle ? JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE : 0;
        EXPECT_TRUE(SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits,
                                            sizeof limits));
        // As long as one of the two runs, the pipe isn't broken.
        Pipe pipe;
        STARTUPINFOA streams{};
        streams.hStdError = pipe.writeEnd.get();
        const Child child =
            start(childLine("--again \"--err x --sleep 60000\""), CREATE_SUSPENDED, &streams);
        pipe.writeEnd.reset();
        ASSERT_TRUE(AssignProcessToJobObject(job.get(), child.process.get()));
        EXPECT_EQ(ResumeThread(child.thread.get()), 1u);
        DWORD available = 0;
        EXPECT_TRUE(test::waitFor([&] {
            return PeekNamedPipe(pipe.readEnd.get(), nullptr, 0, nullptr, &available, nullptr) !=
                       FALSE &&
                   available == 1;
        }));
        if (byItsHandle)
            job.reset();
        else
            EXPECT_TRUE(TerminateJobObject(job.get(), 7));
        EXPECT_EQ(WaitForSingleObject(child.process.get(), 5000), DWORD{WAIT_OBJECT_0});
        EXPECT_TRUE(byItsHandle || exitCode(child) == 7);
        char byte = 0;
        EXPECT_TRUE(ReadFile(pipe.readEnd.get(), &byte, 1, &available, nullptr));
        EXPECT_TRUE(test::waitFor([&] {
            return PeekNamedPipe(pipe.readEnd.get(), nullptr, 0, nullptr, &available, nullptr) ==
                   FALSE;
        }));
    }
}

TEST(Processes, ChildOutlivesItsHandles) {
    const Scratch scratch;
    start(childLine("--touch " + inQuotes(scratch.path("mark"))),
          DETACHED_PROCESS | CREATE_NO_WINDOW);
    EXPECT_TRUE(test::waitFor([&] { return scratch.exists("mark"); }));
}

TEST(Processes, ClosedHandlesAreInvalid) {
    Child child = start(childLine("--exit 0"));
    HANDLE process = child.process.release();
    WaitForSingleObject(process, INFINITE);
    EXPECT_TRUE(CloseHandle(process));
    DWORD any = 0;
    EXPECT_FALSE(GetExitCodeProcess(process, &any));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(WaitForSingleObject(process, 0), DWORD{WAIT_FAILED});
    EXPECT_EQ(ResumeThread(process), static_cast<DWORD>(-1));
    EXPECT_FALSE(CloseHandle(process));
}

TEST(Pipes, PeekAndReadUntilThePipeIsBroken) {
    Pipe pipe;
    const HANDLE readEnd = pipe.readEnd.get();
    DWORD available = 9;
    EXPECT_TRUE(PeekNamedPipe(readEnd, nullptr, 0, nullptr, &available, nullptr));
    EXPECT_EQ(available, 0u);

    // The writer is a child with the pipe as its output, as in a run.
    STARTUPINFOA streams{};
    streams.hStdOutput = pipe.writeEnd.get();
    WaitForSingleObject(start(childLine("--write 10"), 0, &streams).process.get(), INFINITE);
    pipe.writeEnd.reset();
    ASSERT_TRUE(PeekNamedPipe(readEnd, nullptr, 0, nullptr, &available, nullptr));
    EXPECT_EQ(available, 10u);
    char buffer[16] = {};
    DWORD count = 0;
    EXPECT_TRUE(ReadFile(readEnd, buffer, 4, &count, nullptr));
    EXPECT_EQ(std::string(buffer, count), "abcd");
    EXPECT_TRUE(ReadFile(readEnd, buffer, sizeof buffer, &count, nullptr));
    EXPECT_EQ(std::string(buffer, count), "efghij");
    EXPECT_FALSE(PeekNamedPipe(readEnd, nullptr, 0, nullptr, &available, nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_BROKEN_PIPE});
    SetLastError(NO_ERROR);
    EXPECT_FALSE(ReadFile(readEnd, buffer, sizeof buffer, &count, nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_BROKEN_PIPE});
}

}  // namespace
}  // namespace corvane
