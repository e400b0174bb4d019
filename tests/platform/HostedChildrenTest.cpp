// Children of the stand-in: what reaches a host program, how it is found, batch files.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "Testing.h"
#include "platform/hosted/Batch.h"
#include "platform/hosted/ChildText.h"
#include "platform/hosted/CommandLine.h"
#include "platform/hosted/Paths.h"

namespace corvane::hosted {
namespace {

using corvane::testing::childLine;
using corvane::testing::childProgram;
using corvane::testing::ChildResult;
using corvane::testing::contentOf;
using corvane::testing::inQuotes;
using corvane::testing::runChild;
using corvane::testing::runPiped;
using corvane::testing::ScopedVariable;
using corvane::testing::Scratch;

TEST(ChildText, MappedPathsOnly) {
    const ScopedVariable drives("CORVANE_DRIVES", "C=/srv/c;D=/");
    const struct {
        const char* text;
        const char* childs;
    } cases[] = {
        // Paths and what may stand around them.
        {"Z:\\tmp\\a.jar", "/tmp/a.jar"},
        {"C:\\a b\\c", "/srv/c/a b/c"},
        {"c:/a\\b", "/srv/c/a/b"},
        {"C:\\", "/srv/c/"},
        {"D:\\", "/"},
        {"-Dapp.dir=Z:\\app", "-Dapp.dir=/app"},
        {"-javaagent:Z:\\x\\a.jar=k", "-javaagent:/x/a.jar=k"},
        {"@Z:\\args", "@/args"},
        {"[Z:\\a]", "[/a]"},
        {"say \"Z:\\a\" b\\c", "say \"/a\" b\\c"},
        {"Z:\\a|Z:\\b?x\\y", "/a|/b?x\\y"},
        {"Z:\\a,Z:\\b\\c", "/a,/b/c"},
        // A launcher that was given host paths goes on with backslashes.
        {"-Da=/tmp\\x\\y.jar;/usr/lib\\z", "-Da=/tmp/x/y.jar:/usr/lib/z"},
        {"/no such directory\\x;y", "/no such directory\\x;y"},
        {"/tmp/x;a\\b", "/tmp/x;a\\b"},
        // Lists.
        {"Z:\\tmp\\a.jar;Z:\\tmp\\b.jar", "/tmp/a.jar:/tmp/b.jar"},
        {";D:\\a.jar;", ":/a.jar:"},
        {"-Dp=Z:\\a;Z:\\b", "-Dp=/a:/b"},
        {"lib\\x;Z:\\b;.", "lib\\x:/b:."},
        {"Z:\\a:Z:\\b", "/a:/b"},
        // Anything else arrives untouched.
        {"", ""},
        {"a;b", "a;b"},
        {"Q:\\x", "Q:\\x"},
        {"x\\y", "x\\y"},
        {"http://h/p", "http://h/p"},
        {"z://h/p", "z://h/p"},
        {"xZ:\\a;b", "xZ:\\a;b"},
        {"1C:\\a", "1C:\\a"},
        {"\xC3\xA9"
         "C:\\a",
         "\xC3\xA9"
         "C:\\a"},
        {"file:///C:/a", "file:///C:/a"},
        {"\\\\?\\C:\\a", "\\\\?\\C:\\a"},
        {"C:", "C:"},
        {"C:rel", "C:rel"},
        {"\\tmp\\a", "\\tmp\\a"},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(childText(row.text), row.childs) << row.text;
    }
}

TEST(HostedChildren, ArgumentsAndSetVariablesArriveInHostForm) {
    EXPECT_EQ(runChild("args -cp Z:\\a.jar;Z:\\b.jar \"Z:\\my dir\\\\\" x\\y ;").out,
              "[-cp][/a.jar:/b.jar][/my dir/][x\\y][;]");
    // The program's own path is the host's.
    EXPECT_EQ(runChild("self").out,
              std::string("[").append(*hostPath(childProgram().c_str())) + "]");
    ASSERT_EQ(setenv("CORVANE_INHERITED", "Z:\\a;b", 1), 0);
    const ScopedVariable set("CORVANE_SET", "Z:\\a;Z:\\b");
    EXPECT_EQ(runChild("env CORVANE_SET").out, "/a:/b");
    EXPECT_EQ(corvane::testing::variable("CORVANE_SET"), "Z:\\a;Z:\\b");
    EXPECT_EQ(runChild("env CORVANE_INHERITED").out, "Z:\\a;b");
    unsetenv("CORVANE_INHERITED");
}

// A directory with a shell script in it that says its own name.
std::string script(const Scratch& scratch, const std::string& name) {
    const std::string path = scratch.file(name, "#!/bin/sh\nprintf '%s' \"${0##*/}$1\"\n");
    makeExecutable(path.c_str());
    return path;
}

TEST(HostedChildren, ProgramsAreFoundAsOnWindows) {
    const Scratch scratch;
    scratch.directory("a b");
    scratch.directory("tool");
    const std::string spaced = script(scratch, "a b\\run me.exe");
    script(scratch, "plain");
    const std::string host = *hostPath(scratch.path().c_str());
    const ScopedVariable path("PATH", (corvane::testing::variable("PATH") + ":" + host).c_str());
    const struct {
        std::string line;
        const char* output;
    } cases[] = {
        {inQuotes(spaced) + " x", "run me.exex"},
        {spaced + " x", "run me.exex"},
        {scratch.path("a b\\run me") + " x", "run me.exex"},
        {inQuotes(scratch.path("a b\\run me")) + " x", "run me.exex"},
        {scratch.path("plain"), "plain"},
        {host + "/plain y", "plainy"},
        {"plain z", "plainz"},
        {"platform_child args w", "[w]"},  // beside the launcher
    };
    for (const auto& row : cases) {
        const ChildResult result = runPiped(row.line);
        EXPECT_TRUE(result.started) << row.line << " " << result.error;
        EXPECT_EQ(result.out, row.output) << row.line;
    }
    // A directory of that name is passed over in the search, and refused by its path.
    EXPECT_EQ(runPiped("tool").error, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(runPiped(scratch.path("tool")).error, ERROR_ACCESS_DENIED);
    EXPECT_EQ(runPiped(scratch.file("not marked", "#!/bin/sh\n")).error, ERROR_ACCESS_DENIED);
    EXPECT_EQ(runPiped("Q:\\x.exe").error, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(runPiped("").error, ERROR_INVALID_PARAMETER);
}

TEST(HostedChildren, RelativeProgramStartsInAnotherDirectory) {
    const Scratch scratch;
    script(scratch, "here");
    const std::string before = currentHostDirectory();
    ASSERT_EQ(chdir(hostPath(scratch.path().c_str())->c_str()), 0);
    EXPECT_EQ(runPiped(".\\here 1", "\\").out, "here1");
    EXPECT_EQ(runPiped("here 2", "Z:\\").out, "here2");
    ASSERT_EQ(chdir((before + "/").c_str()), 0);
}

TEST(HostedChildren, DeathBySignalAndNoDescriptorsBeyondTheThree) {
    EXPECT_EQ(runChild("abort").exitCode, 128u + 6);
    const int inherited = open("/dev/null", O_RDONLY);  // not closed by exec
    EXPECT_EQ(runPiped("/bin/sh -c \"ls /proc/self/fd\"").out, "0\n1\n2\n3\n");  // 3 is ls's own
    close(inherited);
}

// Starts without pipes and gives the child's process handle.
HandleGuard start(const std::string& commandLine, DWORD flags, HandleGuard& thread) {
    std::string line = commandLine;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION child{};
    EXPECT_TRUE(CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, flags, nullptr,
                               nullptr, &startup, &child));
    thread.reset(child.hThread);
    return HandleGuard(child.hProcess);
}

TEST(HostedChildren, StreamsWithAndWithoutAConsole) {
    const std::string line = childLine("write 3");
    const struct {
        DWORD flags;
        const char* output;
    } cases[] = {
        {0, "abc"},
        {CREATE_NEW_CONSOLE, "abc"},
        {DETACHED_PROCESS | CREATE_NO_WINDOW, ""},
        {DETACHED_PROCESS, ""},
    };
    for (const auto& row : cases) {
        ::testing::internal::CaptureStdout();
        ::testing::internal::CaptureStderr();
        HandleGuard thread;
        const HandleGuard process = start(line, row.flags, thread);
        WaitForSingleObject(process.get(), INFINITE);
        ::testing::internal::GetCapturedStderr();
        EXPECT_EQ(::testing::internal::GetCapturedStdout(), row.output) << row.flags;
    }
}

TEST(HostedChildren, LeaveNoZombies) {
    {
        HandleGuard thread;
        start(childLine("sleep 30"), 0, thread);
    }
    Sleep(200);
    runChild("exit 0");  // starting the next one collects the one that nobody has any more
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST(HostedChildren, SuspendedChildEndsWithItsHandles) {
    const Scratch scratch;
    const std::string mark = scratch.path("mark");
    pid_t pid = 0;
    {
        std::string line = childLine("touch " + inQuotes(mark));
        STARTUPINFOA startup{};
        PROCESS_INFORMATION child{};
        ASSERT_TRUE(CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_SUSPENDED,
                                   nullptr, nullptr, &startup, &child));
        pid = static_cast<pid_t>(child.dwProcessId);
        const HandleGuard process(child.hProcess);
        const HandleGuard thread(child.hThread);
    }
    for (int i = 0; i < 200 && kill(pid, 0) == 0 && waitpid(pid, nullptr, WNOHANG) == 0; ++i) {
        Sleep(10);
    }
    EXPECT_NE(kill(pid, 0), 0);
    EXPECT_EQ(GetFileAttributesA(mark.c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(Batch, UnknownTextsAreRefused) {
    for (const char* text : {"del C:\\x\n", "copy a b\n", ":L\ndel \"Z:\\x\"\n", "del \"Q:\\x\"\n",
                             "if exist \"Z:\\x\" goto L\n", ":L\nif exist \"Z:\\x\" goto M\n",
                             ":L\n:M\nif exist \"Z:\\x\" goto M\n", "@echo text\n", ":\n",
                             "del \"Z:\\x\" & del \"Z:\\y\"\n"}) {
        EXPECT_FALSE(translateBatch(text)) << text;
    }
    EXPECT_EQ(translateBatch(""), "");
    EXPECT_EQ(translateBatch("del \"Z:\\it's\"\r\n"), "rm -f -- '/it'\\''s'\n");
}

TEST(Batch, RemovesProgramDirectoryAndItself) {
    const Scratch scratch;
    const std::string directory = scratch.directory("it's here");
    const std::string program = scratch.file("it's here\\copy.exe");
    const std::string log = scratch.path("log");
    const std::string batch = scratch.path("clean.bat");
    scratch.file("clean.bat", ":Repeat\n@echo Deleting " + program + " from within. >> " + log +
                                  "\ndel \"" + program + "\"\nif exist \"" + program +
                                  "\" goto Repeat\nrmdir /q \"" + directory + "\"\ndel \"" + batch +
                                  "\"\n@echo Deleted. >> " + log + "\n");
    HandleGuard thread;
    const HandleGuard process = start(inQuotes(batch), CREATE_SUSPENDED, thread);
    EXPECT_EQ(ResumeThread(thread.get()), 1u);
    EXPECT_EQ(WaitForSingleObject(process.get(), 10000), WAIT_OBJECT_0);
    for (const std::string& path : {program, directory, batch}) {
        EXPECT_EQ(GetFileAttributesA(path.c_str()), INVALID_FILE_ATTRIBUTES) << path;
    }
    EXPECT_EQ(contentOf(log), "Deleting " + program + " from within. \nDeleted. \n");
    const std::string other = scratch.file("other.BAT", "format c:\n");
    EXPECT_EQ(runPiped(other).error, ERROR_BAD_EXE_FORMAT);
}

TEST(Batch, LoopWaitsForAFileInUse) {
    const Scratch scratch;
    const std::string kept = scratch.directory("kept");  // rm leaves a directory alone
    const std::string batch = scratch.file(
        "loop.bat", ":Again\ndel \"" + kept + "\"\nif exist \"" + kept + "\" goto Again\n");
    HandleGuard thread;
    const HandleGuard process = start(inQuotes(batch), 0, thread);
    EXPECT_EQ(WaitForSingleObject(process.get(), 500), WAIT_TIMEOUT);
    RemoveDirectoryA(kept.c_str());
    EXPECT_EQ(WaitForSingleObject(process.get(), 5000), WAIT_OBJECT_0);
}

}  // namespace
}  // namespace corvane::hosted
