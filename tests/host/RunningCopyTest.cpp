// The removal of a running copy: the batch file and the wininit file.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "host/RunningCopy.h"
#include "host/TempFiles.h"
#include "host/WinInitRenamer.h"
#include "platform/Platform.h"
#include "support/Scratch.h"
#include "support/TestContext.h"
#include "support/Wait.h"

namespace corvane {
namespace {

using test::text;
using test::waitFor;

class RunningCopyTest : public ::testing::Test {
  protected:
    RunningCopyTest() {
        run.context.tempDir = scratch.path();
        run.context.launcherPath = scratch.write("LREcopy.tmp\\setup.exe", "x");
        run.context.originalLauncherGiven = true;
    }

    test::Scratch scratch;
    test::TestContext run;
};

TEST_F(RunningCopyTest, TheBatchFileRemovesCopyDirectoryAndItself) {
    cleanupAtExit();
    EXPECT_EQ(run.context.tempFiles.count(), 0);
    // Looking into the copy's directory would keep the batch file from removing it.
    EXPECT_TRUE(waitFor([&] { return std::filesystem::is_empty(scratch.native()); }))
        << ::testing::PrintToString(scratch.list());
}

TEST_F(RunningCopyTest, TheDebugLogFollowsIt) {
    run.context.debugLogEnabled = true;
    run.context.debugLogPath = scratch.path("debug");
    removeRunningCopy();
    EXPECT_TRUE(waitFor([&] {
        return scratch.read("debug").find("Deleted batch file ") != std::string::npos;
    })) << scratch.read("debug");
    const std::string log = scratch.read("debug");
    EXPECT_EQ(log.find("Launcher: Cleanup batch file called: "), 0u);
    EXPECT_NE(log.find("Deleting " + text(run.context.launcherPath) + " from within batch file."),
              std::string::npos);
}

// The wininit file lies in the Windows directory, which only a scratch system may lose.
class WinInitTest : public ::testing::Test {
  protected:
    WinInitTest() {
        char directory[MAX_PATH] = "";
        GetWindowsDirectoryA(directory, sizeof directory);
        path = nativePath((std::string(directory) + "\\WinInit.Ini").c_str());
        std::filesystem::create_directories(path.parent_path());
        remove();
        victim = scratch.write("victim.exe", "");
        char name[MAX_PATH] = "";
        GetShortPathNameA(victim.cstr(), name, sizeof name);
        line = "NUL=" + std::string(name) + "\n";
    }
    ~WinInitTest() override { remove(); }

    void remove() const { std::filesystem::remove(path); }

    // Adds one line to a wininit file of that content and gives the new content.
    std::string add(const std::string& content) {
        std::ofstream(path, std::ios::binary) << content;
        WinInitRenamer renamer;
        renamer.addDeleteLine(victim.cstr());
        EXPECT_EQ(renamer.flush(), 0u);
        return read();
    }
    std::string read() const {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    test::Scratch scratch;
    std::filesystem::path path;
    String victim;
    std::string line;
};

TEST_F(WinInitTest, LinesComeFirstInTheirSection) {
    EXPECT_EQ(add(""), "[Rename]\n" + line);
    EXPECT_EQ(add("[x]\na=b\n"), "[x]\na=b\n[Rename]\n" + line);
    EXPECT_EQ(add("[Rename]\nNUL=old\n[x]\n"), "[Rename]\n" + line + "NUL=old\n[x]\n");
    EXPECT_EQ(add("[x]\n[Rename]"), "[x]\n[Rename]\n" + line);
}

TEST_F(WinInitTest, NothingToDoAndNothingPossible) {
    WinInitRenamer renamer;
    EXPECT_EQ(renamer.flush(), 0u);
    EXPECT_FALSE(std::filesystem::exists(path));
    renamer.addDeleteLine(scratch.path("missing").cstr());
    EXPECT_EQ(renamer.flush(), 0u) << "what isn't there needs no deletion";
    renamer.addDeleteLine(victim.cstr());
    std::filesystem::create_directory(path);
    EXPECT_EQ(renamer.flush(), static_cast<std::uint32_t>(ERROR_ACCESS_DENIED));
    std::filesystem::remove(path);
    EXPECT_EQ(renamer.flush(), 0u) << "the lines stayed";
    EXPECT_EQ(read(), "[Rename]\n" + line);
}

TEST_F(WinInitTest, TheWindows95FamilyUsesIt) {
    test::TestContext run;
    run.context.win9xFamily = true;
    run.context.launcherPath = victim;
    removeRunningCopy();
    EXPECT_EQ(read().find("[Rename]\n" + line + "NUL="), 0u);
}

}  // namespace
}  // namespace corvane
