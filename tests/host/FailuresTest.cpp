// What becomes of the host services when an operation of the system fails, by failures on demand.
#include <gtest/gtest.h>

#include "host/DirectoryWalker.h"
#include "host/RunningCopy.h"
#include "host/TempFiles.h"
#include "host/WinInitRenamer.h"
#include "platform/Platform.h"
#include "platform/hosted/Faults.h"
#include "support/Scratch.h"
#include "support/TestContext.h"

namespace corvane {
namespace {

using hosted::ScopedFault;
using test::failureOf;
using test::text;

class FailuresTest : public ::testing::Test {
  protected:
    FailuresTest() {
        run.context.tempDir = scratch.path();
        run.context.logFile = scratch.path("log");
    }

    // The batch file that `removeRunningCopy` leaves when it can't be started.
    std::string unstartedBatch() {
        const ScopedFault fault("CreateProcessA", ERROR_ACCESS_DENIED);
        removeRunningCopy();
        for (const std::string& name : scratch.list()) {
            if (name.ends_with(".bat"))
                return scratch.read(name);
        }
        return "none";
    }

    test::Scratch scratch;
    test::TestContext run;
};

TEST_F(FailuresTest, ATemporaryNameThatIsDeniedIsTriedAgain) {
    const ScopedFault noPause("Sleep", ERROR_GEN_FAILURE, 0);
    const ScopedFault first("GetTempFileNameA", ERROR_ACCESS_DENIED, 1);
    const ScopedFault second("GetTempFileNameA", ERROR_ACCESS_DENIED, 2);
    const String directory = createTempDirectory();
    EXPECT_TRUE((GetFileAttributesA(directory.cstr()) & FILE_ATTRIBUTE_DIRECTORY) != 0);
    EXPECT_EQ(text(run.context.tempDirs.last()), text(directory));
}

TEST_F(FailuresTest, ATemporaryNameThatIsDeniedForGoodIsAFailure) {
    const ScopedFault noPause("Sleep", ERROR_GEN_FAILURE, 0);
    const ScopedFault denied("GetTempFileNameA", ERROR_ACCESS_DENIED, 0);
    EXPECT_EQ(failureOf([] { createTempDirectory(); }),
              "GetTempFileName failed  ==>  Access is denied.\r\n");
}

TEST_F(FailuresTest, ANameThatSomebodyElseTookIsLeftToHim) {
    const ScopedFault taken("CreateDirectoryA", ERROR_ALREADY_EXISTS);
    const String directory = createTempDirectory();
    EXPECT_TRUE((GetFileAttributesA(directory.cstr()) & FILE_ATTRIBUTE_DIRECTORY) != 0);
    EXPECT_EQ(scratch.list().size(), 1u);
}

TEST_F(FailuresTest, NoTemporaryNameIsAFailureAndRegistersNothing) {
    const ScopedFault full("GetTempFileNameA", ERROR_DISK_FULL, 0);
    const std::string words =
        "GetTempFileName failed  ==>  There is not enough space on the disk.\r\n";
    EXPECT_EQ(failureOf([] { createTempDirectory(); }), words);
    EXPECT_EQ(failureOf([] { createTempFile(); }), words);
    EXPECT_EQ(run.context.tempDirs.count() + run.context.tempFiles.count(), 0);
}

class CountingWalker final : public DirectoryWalker {
  public:
    CountingWalker() : DirectoryWalker(true) {}

    bool onFile(const String&) override {
        ++files;
        return false;
    }

    int files = 0;
};

TEST_F(FailuresTest, AListingThatBreaksOffEndsTheWalk) {
    for (const char* name : {"d\\a", "d\\b", "d\\e\\c"})
        scratch.write(name, "");
    CountingWalker walker;
    {
        const ScopedFault broken("FindNextFileA", ERROR_IO_DEVICE, 2);
        EXPECT_EQ(failureOf([&] { walker.walk(scratch.path("d")); }),
                  "The request could not be performed because of an I/O device error.\r\n");
    }
    // A name that can't be told and a directory that can't be listed are passed over.
    walker.files = 0;
    const ScopedFault longName("FindNextFileA", ERROR_MORE_DATA, 2);
    const ScopedFault denied("FindFirstFileA", ERROR_ACCESS_DENIED, 2);
    EXPECT_FALSE(walker.walk(scratch.path("d")));
    EXPECT_EQ(walker.files, 2);
}

TEST_F(FailuresTest, CleanupTriesAgainWhatIsHeld) {
    const String file = createTempFile();
    {
        const ScopedFault held("DeleteFileA", ERROR_SHARING_VIOLATION, 1);
        cleanupAtExit();
    }
    EXPECT_EQ(scratch.list(), std::vector<std::string>{"log"});
    EXPECT_NE(scratch.read("log").find("Could not delete " + text(file) + " :  The process"),
              std::string::npos);
}

// A minute's worth of tries for all that is registered together.
TEST_F(FailuresTest, CleanupGivesUpOnWhatStaysHeldAndGoesOn) {
    const String before = createTempDirectory();
    const String held = createTempDirectory();
    const String file = scratch.write(text(held.substr(scratch.path().length() + 1)) + "\\f", "");
    const FileGuard holder(CreateFileA(file.cstr(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                       FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(holder);
    const ScopedFault noPause("Sleep", ERROR_GEN_FAILURE, 0);
    cleanupAtExit();
    EXPECT_EQ(run.context.tempDirs.count(), 0);
    EXPECT_EQ(GetFileAttributesA(before.cstr()), INVALID_FILE_ATTRIBUTES);
    EXPECT_NE(scratch.read("log").find("WARNING: Gave up on deleting " + text(held)),
              std::string::npos);
}

TEST_F(FailuresTest, TheBatchFileHoldsWholePaths) {
    const std::string deep = "dir\\" + std::string(150, 'd') + "\\" + std::string(100, 'e') + "\\";
    const std::string names[] = {"LREcopy.tmp\\setup.exe", "LRE\xC3\xBC.tmp\\setup.exe",
                                 deep + "\xC3\xBC.exe"};
    for (const std::string& name : names) {
        const std::string exe = text(scratch.write(name, "x"));
        run.context.launcherPath = exe.c_str();
        const std::string directory = exe.substr(0, exe.rfind('\\'));
        const std::string batch = unstartedBatch();
        EXPECT_EQ(batch.find(":Repeat\ndel \"" + exe + "\"\nif exist \"" + exe +
                             "\" goto Repeat\nrmdir /q \"" + directory + "\"\ndel \""),
                  0u)
            << batch;
        EXPECT_TRUE(scratch.exists(name)) << "the copy stays, with no failure";
        for (const std::string& left : scratch.list()) {
            if (left.ends_with(".bat"))
                DeleteFileA(scratch.path(left).cstr());
        }
    }
}

TEST_F(FailuresTest, WithoutADirectoryNoneIsRemoved) {
    run.context.launcherPath = "setup.exe";
    EXPECT_EQ(unstartedBatch().find("rmdir"), std::string::npos);
}

TEST_F(FailuresTest, AWinInitFileThatCannotBeMappedStaysAsItWas) {
    run.context.launcherPath = scratch.write("victim.exe", "");
    setenv("windir", text(scratch.path()).c_str(), 1);
    scratch.write("WinInit.Ini", "[x]\na=b\n");
    WinInitRenamer renamer;
    renamer.addDeleteLine(run.context.launcherPath.cstr());
    for (const char* operation : {"CreateFileMappingA", "MapViewOfFile"}) {
        const ScopedFault fault(operation, ERROR_NOT_ENOUGH_MEMORY);
        EXPECT_EQ(renamer.flush(), std::uint32_t{ERROR_NOT_ENOUGH_MEMORY});
        EXPECT_EQ(scratch.read("WinInit.Ini"), "[x]\na=b\n") << operation;
    }
    EXPECT_EQ(renamer.flush(), 0u) << "the line stayed";
    unsetenv("windir");
    EXPECT_NE(scratch.read("WinInit.Ini").find("[Rename]\nNUL="), std::string::npos);
}

// The host can leave nothing for its next start, as a user without the right can't on Windows.
TEST_F(FailuresTest, AnOrderForTheNextStartThatIsRefusedGivesWayToTheBatchFile) {
    run.context.launcherPath = scratch.write("LREcopy.tmp\\setup.exe", "x");
    run.context.sessionEnding = true;
    EXPECT_EQ(unstartedBatch().find(":Repeat\n"), 0u);
}

}  // namespace
}  // namespace corvane
