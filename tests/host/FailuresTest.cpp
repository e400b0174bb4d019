// What becomes of the host services when an operation of the system fails, by failures on demand.
#include <gtest/gtest.h>

#include "foundation/TextLines.h"
#include "host/RunningCopy.h"
#include "host/TempFiles.h"
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
        std::string content = "none";
        for (const std::string& name : scratch.list()) {
            if (name.ends_with(".bat")) {
                content = scratch.readText(name);
                std::filesystem::remove(scratch.native(name));
            }
        }
        return content;
    }

    test::Scratch scratch;
    test::TestContext run;
};

TEST_F(FailuresTest, ATemporaryDirectoryIsTriedAgain) {
    const ScopedFault noPause("Sleep", ERROR_GEN_FAILURE, 0);
    const ScopedFault denied("GetTempFileNameA", ERROR_ACCESS_DENIED, 1);
    const ScopedFault somebodyElses("CreateDirectoryA", ERROR_ALREADY_EXISTS);
    const String directory = createTempDirectory();
    EXPECT_TRUE((GetFileAttributesA(directory.cstr()) & FILE_ATTRIBUTE_DIRECTORY) != 0);
    EXPECT_EQ(text(run.context.tempDirs.last()), text(directory));
    EXPECT_EQ(scratch.list().size(), 1u);
}

TEST_F(FailuresTest, NoTemporaryNameIsAFailureAndRegistersNothing) {
    const ScopedFault noPause("Sleep", ERROR_GEN_FAILURE, 0);
    const struct {
        std::uint32_t code;
        int calls;  // 0: all
        std::string words;
    } cases[] = {{ERROR_ACCESS_DENIED, 0, text(getTempRoot()) + ": Access is denied.\r\n"},
                 {ERROR_DISK_FULL, 1, "There is not enough space on the disk.\r\n"}};
    for (const auto& [code, calls, words] : cases) {
        for (String (*const create)() : {createTempDirectory, createTempFile}) {
            const ScopedFault fault("GetTempFileNameA", code, calls);
            EXPECT_EQ(failureOf(create), "GetTempFileName failed  ==>  " + words);
        }
    }
    EXPECT_EQ(run.context.tempDirs.count() + run.context.tempFiles.count(), 0);
}

TEST_F(FailuresTest, ADirectoryThatCanNotBeReadIsNamed) {
    scratch.write("t\\one\\file", "");
    for (const DWORD code : {DWORD{ERROR_INVALID_PARAMETER}, DWORD{ERROR_ACCESS_DENIED}}) {
        const ScopedFault unreadable("FindFirstFileA", code, 1);
        removeTree(scratch.path("t"));
    }
    const std::string log = scratch.readText("log");
    const std::string named = "WARNING: Could not read " + text(scratch.path("t")) + "\\ :  ";
    EXPECT_NE(log.find(named), std::string::npos) << log;
    EXPECT_EQ(log.find(named), log.rfind(named)) << "one that may not be opened is nobody's news";
}

TEST_F(FailuresTest, ALinkIsRemovedAndWhatItLeadsToStays) {
    scratch.write("kept\\inner", "x");
    scratch.write("t\\file", "x");
    for (const char* link : {"t\\link", "linked"}) {
        std::filesystem::create_directory_symlink(scratch.native("kept"), scratch.native(link));
        removeTree(scratch.path(link[0] == 't' ? "t" : link));
    }
    EXPECT_EQ(scratch.list(), (std::vector<std::string>{"kept", "kept\\inner"}));
}

// Seen by the removal of a tree, which walks it.
TEST_F(FailuresTest, AListingThatBreaksOffEndsTheWalk) {
    for (const char* name : {"d\\a", "d\\b", "d\\e\\c"})
        scratch.write(name, "");
    {
        const ScopedFault broken("FindNextFileA", ERROR_IO_DEVICE, 1);
        EXPECT_EQ(failureOf([&] { removeTree(scratch.path("d")); }),
                  "The request could not be performed because of an I/O device error.\r\n");
    }
    // What can't be listed is passed over: a directory, and a name too long to be told.
    const ScopedFault tooLong("FindNextFileA", ERROR_MORE_DATA, 2);
    const ScopedFault denied("FindFirstFileA", ERROR_ACCESS_DENIED, 2);
    removeTree(scratch.path("d"));
    EXPECT_EQ(scratch.list(), (std::vector<std::string>{"d", "d\\e", "d\\e\\c", "log"}));
}

TEST_F(FailuresTest, CleanupTriesAgainWhatIsHeld) {
    const String file = createTempFile();
    {
        const ScopedFault held("DeleteFileA", ERROR_SHARING_VIOLATION, 1);
        cleanupAtExit();
    }
    EXPECT_EQ(scratch.list(), std::vector<std::string>{"log"});
    EXPECT_NE(scratch.readText("log").find("Could not delete " + text(file) + " :  The process"),
              std::string::npos);

    for (const DWORD code : {ERROR_ACCESS_DENIED, ERROR_FILE_NOT_FOUND}) {
        createTempFile();
        {
            const ScopedFault unreadable("GetFileAttributesA", code, 1);
            cleanupAtExit();
        }
        EXPECT_EQ(scratch.list(), std::vector<std::string>{"log"}) << code;
    }
}

// A minute's worth of tries for all that is registered together.
TEST_F(FailuresTest, CleanupGivesUpOnWhatStaysHeldAndGoesOn) {
    const std::string directory = text(createTempDirectory());
    createTempFile();
    const ScopedFault noPause("Sleep", ERROR_GEN_FAILURE, 0);
    const ScopedFault held("RemoveDirectoryA", ERROR_SHARING_VIOLATION, 0);
    cleanupAtExit();
    EXPECT_EQ(scratch.list().size(), 2u) << "the directory and the log";
    const auto told = [&](const std::string& words) {
        const std::string log = scratch.readText("log");
        int count = 0;
        for (std::size_t at = log.find(words); at != std::string::npos;
             at = log.find(words, at + 1))
            ++count;
        return count;
    };
    EXPECT_EQ(told("WARNING: Gave up on deleting " + directory), 1);
    EXPECT_EQ(told("WARNING: Could not delete " + directory), 2) << "the first try and the last";
    run.context.sessionEnding = true;
    run.context.tempDirs.add(directory.c_str());
    cleanupAtExit();
    EXPECT_EQ(told("WARNING: Could not delete " + directory), 3) << "the only one";
}

TEST_F(FailuresTest, TheBatchFileHoldsWholePaths) {
    const std::string directories[] = {
        "LREcopy.tmp", "LRE\xC3\xBC.tmp", "100%.tmp",
        "dir\\" + std::string(150, 'd') + "\\" + std::string(100, 'e')};
    for (const std::string& name : directories) {
        const std::string directory = text(replaceAll(scratch.path(name), "%", "%%"));
        const std::string exe = directory + "\\setup\xC3\xBC.exe";
        run.context.launcherPath = scratch.write(name + "\\setup\xC3\xBC.exe", "x");
        EXPECT_EQ(unstartedBatch().find(":Repeat\ndel \"" + exe + "\"\nif exist \"" + exe +
                                        "\" goto Repeat\nrmdir /q \"" + directory + "\"\ndel \""),
                  0u)
            << exe;
        EXPECT_TRUE(scratch.exists(name)) << "the copy stays, with no failure";
    }
    run.context.launcherPath = "setup.exe";
    EXPECT_EQ(unstartedBatch().find("rmdir"), std::string::npos) << "there is no directory";
}

TEST_F(FailuresTest, AScannerThatHoldsTheBatchFilesNameIsWaitedFor) {
    const ScopedFault noPause("Sleep", ERROR_GEN_FAILURE, 0);
    const ScopedFault held("DeleteFileA", ERROR_SHARING_VIOLATION, 1);
    run.context.launcherPath = scratch.write("LREcopy.tmp\\setup.exe", "x");
    EXPECT_NE(unstartedBatch(), "none");
    EXPECT_EQ(scratch.list(),
              (std::vector<std::string>{"LREcopy.tmp", "LREcopy.tmp\\setup.exe", "log"}));
}

// The host can leave nothing for its next start, as a user without the right can't on Windows.
TEST_F(FailuresTest, AnOrderForTheNextStartThatIsRefusedGivesWayToTheBatchFile) {
    run.context.launcherPath = scratch.write("LREcopy.tmp\\setup.exe", "x");
    run.context.sessionEnding = true;
    EXPECT_EQ(unstartedBatch().find(":Repeat\n"), 0u);
}

}  // namespace
}  // namespace corvane
