// The removal of a running copy: the batch file and the wininit file.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "host/RunningCopy.h"
#include "host/TempFiles.h"
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
    }

    test::Scratch scratch;
    test::TestContext run;
};

// That copy, directory and batch file go: tests/endtoend/cases/execute_launcher.
TEST_F(RunningCopyTest, TheDebugLogFollowsIt) {
    run.context.debugLogEnabled = true;
    run.context.debugLogPath = scratch.path("debug");
    // As the launcher that started it hands it on.
    run.context.tempDir = scratch.native().string().c_str();
    run.context.originalLauncherGiven = true;
    cleanupAtExit();
    const auto logged = [&](const std::string& words) {
        return scratch.readText("debug").find(words) != std::string::npos;
    };
    EXPECT_TRUE(waitFor([&] { return logged("Deleted batch file "); }))
        << scratch.readText("debug");
    EXPECT_TRUE(waitFor([&] { return scratch.list() == std::vector<std::string>{"debug"}; }));
    EXPECT_TRUE(logged("Launcher: Cleanup batch file called: "));
    EXPECT_TRUE(logged("Deleting " + text(run.context.launcherPath) + " from within batch file."));
}

TEST_F(RunningCopyTest, WhatIsNoTemporaryFileStays) {
    run.context.debugLogEnabled = true;
    run.context.debugLogPath = scratch.path("debug");
    run.context.originalLauncherGiven = true;
    run.context.launcherPath = "Z:\\elsewhere\\setup.exe";
    cleanupAtExit();
    EXPECT_EQ(scratch.readText("debug").find("batch"), std::string::npos);
}

std::string shortName(const String& path) {
    char name[MAX_PATH] = "";
    GetShortPathNameA(path.cstr(), name, sizeof name);
    return name;
}

// The wininit file lies in the Windows directory, which only a scratch system may lose.
TEST_F(RunningCopyTest, TheWindows95FamilyIsToldInItsWinInitFile) {
    char windows[MAX_PATH] = "";
    GetWindowsDirectoryA(windows, sizeof windows);
    const std::filesystem::path path = nativePath((std::string(windows) + "\\WinInit.Ini").c_str());
    std::filesystem::create_directories(path.parent_path());
    run.context.win9xFamily = true;
    const std::string lines = "NUL=" + shortName(run.context.launcherPath) +
                              "\nNUL=" + shortName(scratch.path("LREcopy.tmp")) + "\n";
    const struct {
        std::string before;  // empty: there is none
        std::string after;
    } cases[] = {{"", "[Rename]\n" + lines},
                 {"[x]\na=b\n", "[x]\na=b\n[Rename]\n" + lines},
                 {"[Rename]\nNUL=old\n[x]\n", "[Rename]\n" + lines + "NUL=old\n[x]\n"},
                 {"[x]\n[Rename]", "[x]\n[Rename]\n" + lines}};
    for (const auto& [before, after] : cases) {
        std::filesystem::remove(path);
        if (!before.empty())
            std::ofstream(path, std::ios::binary) << before;
        removeRunningCopy();
        std::ifstream stream(path, std::ios::binary);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), after) << before;
    }
    std::filesystem::remove(path);
}

}  // namespace
}  // namespace corvane
