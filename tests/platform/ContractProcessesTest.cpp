// What callers rely on with children and pipes, on Windows and on its stand-in alike.
#include <gtest/gtest.h>

#include "Testing.h"
#include "support/Wait.h"

namespace corvane {
namespace {

using testing::Child;
using testing::childLine;
using testing::ChildResult;
using testing::inQuotes;
using testing::runChild;
using testing::runPiped;
using testing::ScopedVariable;
using testing::Scratch;
using testing::start;

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
    for (const DWORD code : {0u, 1u, 255u})
        EXPECT_EQ(runChild("--exit " + std::to_string(code)).exitCode, code);
}

TEST(Processes, ArgumentsAreSplitByTheRuntimesRules) {
    const struct {
        const char *line, *arrives;
    } cases[] = {
        {"", ""},
        {"a  b\tc ", "[a][b][c]"},
        {"\"a b\" c\"d e\"f", "[a b][cd ef]"},
        {"\"\" x", "[][x]"},
        {"\\\"q\\\" \"\\\"\"", "[\"q\"][\"]"},
        {"a\\b \\\\c\\ \"d\\\\\" e", "[a\\b][\\\\c\\][d\\][e]"},
        {"\"a\\\\\\\"b\"", "[a\\\"b]"},
        {"\"open end", "[open end]"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(runChild(row.line).out, row.arrives) << row.line;
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
    const struct {
        std::string line;
        std::string directory;
        DWORD code;
    } cases[] = {
        {"corvane-no-such-program x", "", ERROR_FILE_NOT_FOUND},
        {scratch.path("no.exe"), "", ERROR_FILE_NOT_FOUND},
        {inQuotes(scratch.path("no no.exe")), "", ERROR_FILE_NOT_FOUND},
        {inQuotes(scratch.path("folder")), "", ERROR_ACCESS_DENIED},
        {text, "", ERROR_BAD_EXE_FORMAT},
        {childLine("--exit 0"), scratch.path("no"), ERROR_DIRECTORY},
        {childLine("--exit 0"), text, ERROR_DIRECTORY},
        {childLine("--exit 0"), "Q:\\", ERROR_DIRECTORY},
    };
    for (const auto& row : cases) {
        const char* const directory = row.directory.empty() ? nullptr : row.directory.c_str();
        EXPECT_EQ(runPiped(row.line, directory).error, row.code) << row.line;
    }
}

TEST(Processes, WaitingAndStillActive) {
    const Child child = start(childLine("--sleep 400"));
    EXPECT_EQ(exitCode(child), DWORD{STILL_ACTIVE});
    EXPECT_EQ(WaitForSingleObject(child.process.get(), 0), DWORD{WAIT_TIMEOUT});
    EXPECT_EQ(WaitForSingleObject(child.process.get(), 10), DWORD{WAIT_TIMEOUT});
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
    EXPECT_TRUE(SetThreadPriority(child.thread.get(), THREAD_PRIORITY_IDLE));
    EXPECT_EQ(ResumeThread(child.thread.get()), 1u);
    EXPECT_EQ(WaitForSingleObject(child.process.get(), INFINITE), DWORD{WAIT_OBJECT_0});
    EXPECT_TRUE(scratch.exists("mark"));
    EXPECT_EQ(ResumeThread(child.thread.get()), 0u);
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
    SECURITY_ATTRIBUTES inherit{};
    inherit.nLength = sizeof inherit;
    inherit.bInheritHandle = TRUE;
    HandleGuard readEnd;
    HandleGuard writeEnd;
    ASSERT_TRUE(CreatePipe(readEnd.put(), writeEnd.put(), &inherit, 0));
    DWORD available = 9;
    EXPECT_TRUE(PeekNamedPipe(readEnd.get(), nullptr, 0, nullptr, &available, nullptr));
    EXPECT_EQ(available, 0u);

    // The writer is a child with the pipe as its output, as in a run.
    STARTUPINFOA streams{};
    streams.hStdOutput = writeEnd.get();
    WaitForSingleObject(start(childLine("--write 10"), 0, &streams).process.get(), INFINITE);
    writeEnd.reset();

    ASSERT_TRUE(PeekNamedPipe(readEnd.get(), nullptr, 0, nullptr, &available, nullptr));
    EXPECT_EQ(available, 10u);
    char buffer[16] = {};
    DWORD count = 0;
    EXPECT_TRUE(ReadFile(readEnd.get(), buffer, 4, &count, nullptr));
    EXPECT_EQ(std::string(buffer, count), "abcd");
    EXPECT_TRUE(ReadFile(readEnd.get(), buffer, sizeof buffer, &count, nullptr));
    EXPECT_EQ(std::string(buffer, count), "efghij");
    EXPECT_FALSE(PeekNamedPipe(readEnd.get(), nullptr, 0, nullptr, &available, nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_BROKEN_PIPE});
    SetLastError(NO_ERROR);
    EXPECT_FALSE(ReadFile(readEnd.get(), buffer, sizeof buffer, &count, nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_BROKEN_PIPE});
}

}  // namespace
}  // namespace corvane
