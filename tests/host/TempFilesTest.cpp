// Temporary directories and files, and their removal.
#include <gtest/gtest.h>

#include <thread>

#include "host/Paths.h"
#include "host/TempFiles.h"
#include "platform/Platform.h"
#include "support/Scratch.h"
#include "support/TestContext.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;

class TempFilesTest : public ::testing::Test {
  protected:
    TempFilesTest() {
        run.context.tempDir = scratch.path();
        run.context.logFile = scratch.path("log");
    }

    bool complained(const std::string& name) {
        const std::string words = "WARNING: Could not delete " + text(scratch.path(name)) + " :  ";
        return scratch.readText("log").find(words) != std::string::npos;
    }

    test::Scratch scratch;
    test::TestContext run;
};

TEST_F(TempFilesTest, TheRootIsTheUsersOrTheSystems) {
    EXPECT_EQ(text(getTempRoot()), text(scratch.path()));
    run.context.tempDir = "";
    const String system = getTempRoot();
    EXPECT_EQ(*system.charAt(system.length() - 1), '\\');
    EXPECT_EQ(text(run.context.tempDir), text(system)) << "it stays set for the run";

    scratch.write("a;b\\file", "");
    run.context.tempDir = scratch.path("a;b");
    EXPECT_EQ(text(getTempRoot()), text(shortPath(scratch.path("a;b"))));

    for (const String& bad : {scratch.path("missing"), scratch.write("file", "")}) {
        run.context.tempDir = bad;
        EXPECT_EQ(failureOf([] { createTempDirectory(); }),
                  "Cannot use " + text(bad) +
                      " as the temp directory because it does not exist. Please run the program "
                      "again using the option -cv:tempdir <temp dir> to specify a different "
                      "directory to use.");
    }
}

// The system measures in characters, which may take several bytes, and a name must fit whole.
TEST_F(TempFilesTest, ARootThatIsTooLongIsAFailureAndLeavesNothing) {
    std::string component;
    for (int i = 0; i < 60; ++i)
        component += "\xC3\xBC";
    const String outer = scratch.path(component);
    const String inner = outer + "\\" + component.c_str();
    ASSERT_TRUE(CreateDirectoryA(outer.cstr(), nullptr) && CreateDirectoryA(inner.cstr(), nullptr));
    run.context.tempDir = inner;
    EXPECT_EQ(failureOf([] { createTempDirectory(); }).find("GetTempFileName failed  ==>  "), 0u);
    EXPECT_EQ(failureOf([] { createTempFile(); }).find("GetTempFileName failed  ==>  "), 0u);
    EXPECT_TRUE(RemoveDirectoryA(inner.cstr())) << "it is empty";
    EXPECT_TRUE(RemoveDirectoryA(outer.cstr()));
}

TEST_F(TempFilesTest, CleanupRemovesWhatIsRegistered) {
    const String directory = createTempDirectory();
    const String file = createTempFile();
    const String kept = createTempFile();
    const String keptDirectory = createTempDirectory();
    EXPECT_EQ(directory.find("\\LRE"), scratch.path().length());
    EXPECT_EQ(directory.rfind(".tmp"), directory.length() - 4);

    const std::string inside = text(directory.substr(scratch.path().length() + 1));
    const String readOnly = scratch.write(inside + "\\a\\b\\read-only", "x");
    SetFileAttributesA(readOnly.cstr(), FILE_ATTRIBUTE_READONLY);
    scratch.write(inside + "\\c\\d", "x");
    DeleteFileA(file.cstr());  // somebody else was faster

    std::string otherCase = text(kept);
    for (char& c : otherCase)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    forgetTempFile(otherCase.c_str());
    forgetTempDirectory(keptDirectory);
    forgetTempFile("unknown");
    run.context.cancelRequested.request();
    cleanupAtExit();
    EXPECT_EQ(run.context.tempDirs.count(), 0);
    EXPECT_EQ(run.context.tempFiles.count(), 0);
    EXPECT_EQ(scratch.list().size(), 2u) << "what was forgotten stays, and there is no log";
}

// A file that cannot be deleted holds back its directory and those above it, and nothing else.
TEST_F(TempFilesTest, ATreeGoesAsFarAsItCan) {
    for (const char* name : {"t\\a\\held", "t\\a\\free", "t\\b\\free"})
        scratch.write(name, "x");
    {
        const FileGuard held(CreateFileA(scratch.path("t\\a\\held").cstr(), GENERIC_READ, 0,
                                         nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        ASSERT_TRUE(held);
        removeTree(scratch.path("t"));
        EXPECT_EQ(scratch.list(), (std::vector<std::string>{"log", "t", "t\\a", "t\\a\\held"}));
        EXPECT_TRUE(complained("t\\a\\held"));
        EXPECT_TRUE(complained("t\\a"));
        EXPECT_FALSE(complained("t"));
    }
    EXPECT_FALSE(deleteFileOrDirectory(scratch.path("t"))) << "it isn't empty";
    EXPECT_TRUE(complained("t"));
    removeTree(scratch.path("t"));
    EXPECT_EQ(scratch.list(), std::vector<std::string>{"log"});
    EXPECT_FALSE(deleteFileOrDirectory(scratch.path("missing")));
    EXPECT_TRUE(complained("missing"));
}

// As when the session ends while the run is still busy.
TEST_F(TempFilesTest, ACleanupAndTheRunMayGoOnAtTheSameTime) {
    constexpr int count = 3000;
    const auto name = [](int i) { return String(("C:\\gone\\" + std::to_string(i)).c_str()); };
    for (int i = 0; i < count; ++i)
        run.context.tempFiles.add(name(i));
    std::thread other([&] {
        for (int i = 0; i < count; ++i)
            forgetTempFile(name(i));
    });
    cleanupAtExit();
    other.join();
    EXPECT_EQ(run.context.tempFiles.count(), 0);
}

TEST_F(TempFilesTest, TheDebugLogTellsWhatGoes) {
    run.context.debugLogEnabled = true;
    run.context.debugLogPath = scratch.path("debug");
    const std::string first = text(createTempDirectory());
    const std::string second = text(createTempDirectory());
    const std::string file = text(createTempFile());
    cleanupAtExit();
    EXPECT_EQ(scratch.readText("debug"), "Launcher: Deleting dir: " + second +
                                             "\nLauncher: Deleting dir: " + first +
                                             "\nLauncher: Deleting file: " + file + "\n");
}

}  // namespace
}  // namespace corvane
