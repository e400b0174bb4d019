// Children of the stand-in: what reaches a host program, how it is found, batch files.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>

#include "Testing.h"
#include "platform/hosted/Batch.h"
#include "platform/hosted/ChildText.h"
#include "platform/hosted/CommandLine.h"
#include "platform/hosted/Paths.h"
#include "support/Wait.h"

namespace corvane::hosted {
namespace {

using namespace corvane::testing;

TEST(ChildText, MappedPathsOnly) {
    const ScopedVariable drives("CORVANE_DRIVES", "C=/srv/c;D=/");
    const std::pair<const char*, const char*> cases[] = {
        {R"(C:\a b\c)", "/srv/c/a b/c"},
        {R"(c:/a\b)", "/srv/c/a/b"},
        {R"(D:\)", "/"},
        {R"(-javaagent:Z:\x\a.jar=k)", "-javaagent:/x/a.jar=k"},
        {R"(say "Z:\a" b\c [Z:\d])", R"(say "/a" b\c [/d])"},
        {R"(Z:\a|Z:\b?x\y)", R"(/a|/b?x\y)"},
        {R"(Z:\a,Z:\b\c)", "/a,/b/c"},
        // A launcher that was given host paths goes on with backslashes.
        {R"(-Da=/tmp\x\y.jar;/usr/lib\z)", "-Da=/tmp/x/y.jar:/usr/lib/z"},
        // But not what has another start, or goes on with a list.
        {R"(x/tmp\y)", R"(x/tmp\y)"},
        {R"(.\y)", R"(.\y)"},
        {R"(/tmp;a\b)", R"(/tmp;a\b)"},
        // Lists.
        {R"(-Dp=Z:\tmp\a.jar;Z:\b)", "-Dp=/tmp/a.jar:/b"},
        {R"(lib\x;D:\b;.;)", R"(lib\x:/b:.:)"},
        {R"(Z:\a:Z:\b)", "/a:/b"}};
    for (const auto& [text, childs] : cases)
        EXPECT_EQ(childText(text), childs) << text;
    for (const char* text :
         {"", "a;b", R"(Q:\x;y)", R"(x\y)", "http://h/p", "z://h/p", R"(xZ:\a;b)", R"(1C:\a)",
          "\xC3\xA9\x43:\\a", "file:///C:/a", R"(\\?\C:\a)", "C:", "C:rel", R"(\tmp\a)",
          R"(/no such directory\x;y)", R"(/tmp/x;a\b)", R"(/tmp)"})
        EXPECT_EQ(childText(text), text);
}

TEST(HostedChildren, ArgumentsAndSetVariablesArriveInHostForm) {
    EXPECT_EQ(runChild("-cp Z:\\a.jar;Z:\\b.jar \"Z:\\my dir\\\\\" x\\y ;").out,
              "[-cp][/a.jar:/b.jar][/my dir/][x\\y][;]");
    setenv("CORVANE_INHERITED", "Z:\\a;b", 1);
    setenv("corvane_inherited", "the other", 1);
    const ScopedVariable set("CORVANE_SET", "Z:\\a;Z:\\b");
    EXPECT_EQ(runChild("--env CORVANE_SET --env CORVANE_INHERITED").out, "{/a:/b}{Z:\\a;b}");
    EXPECT_EQ(variable("CORVANE_SET"), "Z:\\a;Z:\\b");
    EXPECT_EQ(variable("corvane_inherited"), "the other");
    unsetenv("corvane_inherited");
    EXPECT_EQ(variable("corvane_inherited"), "Z:\\a;b");
    unsetenv("CORVANE_INHERITED");
}

TEST(HostedChildren, ProgramsAreFoundAsOnWindows) {
    const Scratch scratch;
    // Shell scripts that say their own names and arguments.
    for (const char* name : {"a b\\run me.exe", "plain"})
        makeExecutable(scratch.file(name, "#!/bin/sh\nprintf '%s' \"${0##*/}$1\"\n").c_str());
    const std::string host = scratch.native().string();
    const ScopedVariable path("PATH", (*variable("PATH") + ":" + host).c_str());
    const std::string before = currentHostDirectory();
    ASSERT_EQ(chdir((host + "/a b").c_str()), 0);
    const std::string spaced = scratch.path("a b\\run me");
    const struct {
        std::string line;
        const char* output;
        const char* directory = nullptr;
    } cases[] = {{inQuotes(spaced + ".exe") + " x", "run me.exex"},
                 {spaced + " x", "run me.exex"},
                 {inQuotes(spaced) + " x", "run me.exex"},
                 {host + "/plain y", "plainy"},
                 {"plain z", "plainz"},
                 {"platform_child w", "[w]"},  // beside the launcher
                 {"\".\\run me\" 1", "run me.exe1", "\\"},
                 {"\"run me\" 2", "run me.exe2", "Z:\\"}};
    for (const auto& row : cases)
        EXPECT_EQ(runPiped(row.line, row.directory).out, row.output) << row.line;
    ASSERT_EQ(chdir((before + "/").c_str()), 0);
    // A directory of that name is passed over in the search, and refused by its path.
    scratch.directory("tool");
    const std::pair<std::string, DWORD> failures[] = {
        {"tool", 2},
        {scratch.path("tool"), 5},
        {inQuotes(scratch.path("a")) + " b\\run me.exe", 2},
        {scratch.file("not marked", "#!/bin/sh\n"), 5},
        {"Q:\\x.exe", 2},
        {"", 87},
        {scratch.file("other.BAT", "format c:\n"), 193}};
    for (const auto& [line, code] : failures)
        EXPECT_EQ(runPiped(line).error, code) << line;
}

TEST(HostedChildren, OwnNameDeathBySignalAndNoDescriptorsBeyondTheThree) {
    EXPECT_EQ(runPiped("Z:\\bin\\sh -c \"echo $0\"").out, "/bin/sh\n");
    const auto former = std::signal(SIGCHLD, SIG_IGN);  // as some parents leave it
    EXPECT_EQ(runChild("--abort now").exitCode, 128u + 6);
    std::signal(SIGCHLD, former);
    const int inherited = open("/dev/null", O_RDONLY);  // not closed by exec
    EXPECT_EQ(runPiped("/bin/sh -c \"ls /proc/self/fd\"").out, "0\n1\n2\n3\n");  // 3 is ls's own
    close(inherited);
}

// What a launcher opens that was started without the standard ones takes their numbers.
TEST(HostedChildren, NoStreamOverwritesAnother) {
    const int former[] = {dup(STDIN_FILENO), dup(STDOUT_FILENO)};
    close(STDIN_FILENO);
    close(STDOUT_FILENO);
    const ChildResult result = runChild("--err oops said");
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO}) {
        dup2(former[stream], stream);
        close(former[stream]);
    }
    EXPECT_EQ(result.out, "[said]");
    EXPECT_EQ(result.err, "oops");
}

TEST(HostedChildren, ASignalShortensNoPause) {
    const auto former = std::signal(SIGALRM, [](int) {});
    const itimerval soon{{}, {0, 5000}};
    const ULONGLONG start = GetTickCount64();
    setitimer(ITIMER_REAL, &soon, nullptr);
    Sleep(50);
    EXPECT_GE(GetTickCount64() - start, 50u);
    const auto sinceBoot = std::chrono::steady_clock::now().time_since_epoch();
    EXPECT_LT(std::chrono::abs(sinceBoot - std::chrono::milliseconds(start)),
              std::chrono::seconds(9));
    std::signal(SIGALRM, former);
}

TEST(HostedChildren, LeaveNoZombies) {
    start(childLine("--exit 0"));
    // Starting the next one collects the one that nobody has any more.
    EXPECT_TRUE(test::waitFor([] {
        runChild("--exit 0");
        siginfo_t ended;
        return waitid(P_ALL, 0, &ended, WEXITED | WNOHANG | WNOWAIT) == -1 && errno == ECHILD;
    }));
}

TEST(HostedChildren, SuspendedChildEndsWithItsHandles) {
    const Scratch scratch;
    const auto pid = static_cast<pid_t>(
        start(childLine("--touch " + inQuotes(scratch.path("mark"))), CREATE_SUSPENDED).id);
    EXPECT_TRUE(
        test::waitFor([&] { return kill(pid, 0) != 0 || waitpid(pid, nullptr, WNOHANG) != 0; }));
    EXPECT_FALSE(scratch.exists("mark"));
}

TEST(HostedChildren, SuspendedChildTellsWhyItsProgramCantRun) {
    const Scratch scratch;
    const std::string text = scratch.file("text.exe", "certainly no program, but text\n");
    makeExecutable(text.c_str());
    const Child child = start(text, CREATE_SUSPENDED);
    EXPECT_EQ(ResumeThread(child.thread.get()), static_cast<DWORD>(-1));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_BAD_EXE_FORMAT});
    EXPECT_EQ(WaitForSingleObject(child.process.get(), INFINITE), DWORD{WAIT_OBJECT_0});
}

TEST(HostedChildren, AJobTakesOnlyASuspendedChild) {
    const HandleGuard job(CreateJobObjectA(nullptr, nullptr));
    const Child child = start(childLine("--exit 0"));
    EXPECT_FALSE(AssignProcessToJobObject(job.get(), child.process.get()));
    EXPECT_FALSE(AssignProcessToJobObject(child.process.get(), child.process.get()));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_HANDLE});
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    EXPECT_FALSE(SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, 1));
    EXPECT_EQ(CreateJobObjectA(nullptr, "name"), nullptr);
}

TEST(HostedChildren, AKilledLaunchersJobEndsItsChild) {
    Pipe pipe;
    const pid_t launcher = fork();
    if (launcher == 0) {
        const HandleGuard job(CreateJobObjectA(nullptr, nullptr));
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
        limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
        SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits,
                                sizeof limits);
        STARTUPINFOA streams{};
        streams.hStdError = pipe.writeEnd.get();
        const Child child = start(childLine("--err x --sleep 60000"), CREATE_SUSPENDED, &streams);
        AssignProcessToJobObject(job.get(), child.process.get());
        ResumeThread(child.thread.get());
        WaitForSingleObject(child.process.get(), INFINITE);
        _exit(0);
    }
    pipe.writeEnd.reset();
    char byte = 0;
    DWORD read = 0;
    EXPECT_TRUE(ReadFile(pipe.readEnd.get(), &byte, 1, &read, nullptr)) << "the child runs";
    kill(launcher, SIGKILL);
    waitpid(launcher, nullptr, 0);
    EXPECT_TRUE(test::waitFor([&] {
        return PeekNamedPipe(pipe.readEnd.get(), nullptr, 0, nullptr, &read, nullptr) == FALSE;
    })) << "and runs no more";
}

TEST(Batch, UnknownTextsAreRefused) {
    for (const char* text : {"del C:\\x\n", "copy a b\n", ":L\ndel \"Z:\\x\"\n", "del \"Q:\\x\"\n",
                             "if exist \"Z:\\x\" goto L\n", ":L\nif exist \"Z:\\x\" goto M\n",
                             ":L\n:M\nif exist \"Z:\\x\" goto M\n", "@echo text\n", ":\n",
                             "del \"Z:\\x\" & del \"Z:\\y\"\n"})
        EXPECT_FALSE(translateBatch(text)) << text;
    // A loop ends after a minute.
    EXPECT_EQ(translateBatch(":L\r\n\nif exist \"Z:\\it's 100%%\" goto L\n"),
              "tries=0\nwhile :; do\n[ -e '/it'\\''s 100%' ] || break\ntries=$((tries + 1))\n"
              "[ $tries -lt 300 ] || break\nsleep 0.2\ndone\n");
}

}  // namespace
}  // namespace corvane::hosted
