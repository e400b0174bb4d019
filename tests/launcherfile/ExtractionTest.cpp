// Copying of embedded files to disk.
#include <gtest/gtest.h>

#include <cerrno>

#include "base/Messages.h"
#include "launcherfile/Extraction.h"
#include "launcherfile/LauncherFile.h"
#include "platform/Platform.h"
#include "support/Payload.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;

constexpr std::size_t block = 61439;

class ExtractionTest : public ::testing::Test {
  protected:
    // The first entry of a launcher with these files, its index loaded.
    const FileIndexEntry& load(const std::vector<test::EmbeddedFile>& embedded) {
        run.useLauncher(embedded);
        const StreamGuard stream(openStream(run.context().launcherPath.cstr(), "rb"));
        run.files().readIndex(stream.get(), 0);
        return *run.files().at(0);
    }
    const FileIndexEntry& entryWith(const std::string& content) {
        return load({{FileType::classpathFile, "a.jar", content, 1}});
    }

    test::LauncherRun run;
};

TEST_F(ExtractionTest, TicksOncePerBlock) {
    for (const auto& [size, ticks] :
         {std::pair<std::size_t, int>{0, 0}, {1, 1}, {block, 1}, {block + 1, 2}, {3 * block, 3}}) {
        std::string content(size, 'x');
        for (std::size_t i = 0; i < size; ++i)
            content[i] = static_cast<char>(i * 7 % 251);
        const FileIndexEntry& entry = entryWith(content);
        run.ui().steps = 0;
        for (const char* directory : {"temp", "temp\\"})
            EXPECT_EQ(text(entry.extract(run.scratch.path(directory))),
                      text(run.scratch.path("temp\\a.jar")));
        EXPECT_EQ(run.scratch.read("temp\\a.jar"), content);
        EXPECT_EQ(run.ui().steps, 2 * ticks) << size;
    }
}

TEST_F(ExtractionTest, ALauncherThatEndsEarlyGivesAShorterFile) {
    FileIndexEntry entry;
    entry.name = "short";
    entry.length = 1000000;
    entry.offset = 2;
    entry.extract(run.scratch.path("temp"));
    EXPECT_EQ(run.scratch.read("temp\\short").size(), run.scratch.read("setup.exe").size() - 2);
}

TEST_F(ExtractionTest, FailuresCarryTheirReason) {
    const FileIndexEntry& entry = entryWith(std::string(200000, 'x'));
    const std::string missing = failureOf([&] { entry.extract(run.scratch.path("missing")); });
    EXPECT_TRUE(missing.starts_with("Error writing file = " + std::to_string(ENOENT) + " (" +
                                    text(run.scratch.path("missing\\a.jar")) + ": "));
    EXPECT_TRUE(missing.ends_with(".)")) << missing;
    run.context().cancelRequested.request();
    EXPECT_EQ(failureOf([&] { entry.extract(run.scratch.path("temp")); }), "Canceled by the user.");
    EXPECT_EQ(run.scratch.read("temp\\a.jar"), "") << "created, and not filled";
    run.context().launcherPath = run.scratch.path("gone.exe");
    EXPECT_EQ(failureOf([&] { entry.extract(run.scratch.path("temp")); }),
              "Cannot open launcher file.");
}

TEST_F(ExtractionTest, DiskSpaceIsEstimatedForTheUnpackedFiles) {
    EXPECT_TRUE(hasDiskSpace(run.scratch.path("temp"), 0, 1));
    EXPECT_TRUE(hasDiskSpace("", 1, 1));
    const FileIndexEntry& entry = load(
        {{FileType::jvmInstaller, "i.exe", "x", 1, pack::Decompressed{2147483647, 2147483647}}});
    EXPECT_EQ(failureOf([&] { entry.extract(run.scratch.path("temp")); }),
              "Error writing file = " + text(loadMessage(MessageId::tryAnotherTempDir)));
    EXPECT_FALSE(run.scratch.exists("temp\\i.exe"));
    EXPECT_EQ(
        failureOf([] { hasDiskSpace("Q:\\none", 1, 1); }).find("GetDiskFreeSpace failed  ==>  "),
        0u);
}

TEST_F(ExtractionTest, ExtractAllNamesTheTagFilesForALaterRun) {
    load({{FileType::jvmFile, "1.jvm", "A: 1\n", 1},
          {FileType::jvmFile, "2.jvm", "A: 2\n", 2},
          {FileType::launchScript, "l1", "", 3},
          {FileType::launchScript, "l2", "", 4},
          {FileType::jvmMessage, "message", "", 6}});
    const std::filesystem::path former = std::filesystem::current_path();
    std::filesystem::current_path(run.scratch.native("temp"));
    run.files().extractAll();
    std::filesystem::current_path(former);
    EXPECT_EQ(run.scratch.readText("temp\\input.tag"),
              "ACTION:  RUN_INSTRUCTIONS\nJVM:\n  1.jvm\n  2.jvm\n/:\nLAUNCHSCRIPT:  l2\n"
              "JVMMESSAGE:  message\n");
    EXPECT_EQ(run.scratch.read("temp\\2.jvm"), "A: 2\n");
}

TEST_F(ExtractionTest, FileExistsAlsoWhileSomebodyHasItOpen) {
    const String path = run.scratch.write("temp\\f", "x");
    const FileGuard exclusive(CreateFileA(path.cstr(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(exclusive);
    EXPECT_TRUE(fileExists(path));
    EXPECT_TRUE(fileExists(run.context().launcherPath));
    for (const char* missing : {"temp\\g", "no\\such\\directory"})
        EXPECT_FALSE(fileExists(run.scratch.path(missing)));
    EXPECT_FALSE(run.scratch.exists("run.log")) << "absence is no news";
    EXPECT_FALSE(fileExists(run.scratch.path("temp")));
    EXPECT_NE(run.log().find("ccess"), std::string::npos) << "a directory is";
}

}  // namespace
}  // namespace corvane
