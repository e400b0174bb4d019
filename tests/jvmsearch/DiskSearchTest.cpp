// The scan of the drives and the order of a whole search.
#include <gtest/gtest.h>

#include "jvmsearch/DiskSearch.h"
#include "jvmsearch/SearchRun.h"
#include "support/System.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;

// Notes each hit; ends the scan at the first if asked to, or cancels it.
class Notes final : public ExecutableHandler {
  public:
    bool onExecutableFound(const String& path) override {
        paths.push_back(text(path));
        if (cancels)
            runContext().cancelRequested.request();
        return stops;
    }

    std::vector<std::string> paths;
    bool stops = false;
    bool cancels = false;
};

class DiskSearchTest : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!test::MappedDrives::possible())
            GTEST_SKIP() << "the drives of this system can't be chosen";
        for (const char* directory : {"c", "d", "e"})
            std::filesystem::create_directory(run.scratch.native(directory));
    }

    std::string homes(JvmMatchList& results) {
        std::string out;
        for (std::int32_t i = 0; i < results.count(); ++i)
            out += (i == 0 ? "" : " ") + text(results.at(i)->home());
        return out;
    }

    test::SearchRun run;
    test::MappedDrives drives{run.scratch,
                              {{"C", "c"}, {"D", "d", "removable"}, {"E", "e", "remote"}}};
};

TEST_F(DiskSearchTest, ScansFixedAndNetworkDrivesForWholeComponents) {
    for (const char* name :
         {"c\\bin\\java.exe", "c\\a\\BIN\\Java.exe", "c\\a\\xbin\\java.exe", "d\\bin\\java.exe",
          "c\\RECYCLED\\bin\\java.exe", "c\\recycle.old\\x\\bin\\java.exe",
          "c\\deep\\RECYCLED\\bin\\java.exe", "c\\TEMP\\bin\\java.exe",
          "c\\temp\\sub\\bin\\java.exe", "e\\b\\bin\\java.exe", "c\\bin\\java.exe.txt"})
        run.scratch.write(name, "");
    run.context().tempDir = "C:\\TEMP";
    StringList suffixes;
    suffixes.add("bin\\java.exe");
    Notes notes;
    scanDrives(suffixes, notes);
    std::sort(notes.paths.begin(), notes.paths.end());
    EXPECT_EQ(notes.paths, (std::vector<std::string>{"C:\\a\\BIN\\Java.exe", "C:\\bin\\java.exe",
                                                     "C:\\deep\\RECYCLED\\bin\\java.exe",
                                                     "E:\\b\\bin\\java.exe"}))
        << "the temporary directory is known by its name in any case";
}

TEST_F(DiskSearchTest, StopsCancelsAndFails) {
    for (const char* name : {"c\\1\\java", "c\\2\\java", "c\\3\\java", "e\\java"})
        run.scratch.write(name, "");
    StringList suffixes;
    suffixes.add("java");
    Notes stopping;
    stopping.stops = true;
    scanDrives(suffixes, stopping);
    EXPECT_EQ(stopping.paths.size(), 1u);
    Notes canceling;
    canceling.cancels = true;
    scanDrives(suffixes, canceling);
    EXPECT_EQ(canceling.paths.size(), 1u);

    const test::MappedDrives none(run.scratch, {});
    EXPECT_EQ(failureOf([&] { scanDrives(suffixes, stopping); }),
              "No drives found on this system.");
}

TEST_F(DiskSearchTest, TheFirstFileIsVerifiedOnTheSpotTheOthersBehindTheScan) {
    TagFile& first = run.addJvmFile("first", "1");
    run.addJvmFile("second", "2");
    first.setValue("SEARCH_ALL", "1");
    run.home("c\\a", "2");
    run.home("c\\b", "3");
    JvmMatchList results;
    run.search().findJvm(results);
    EXPECT_EQ(homes(results), "C:\\a");
    // Both are tried for the first file during the scan, and again for the second behind it.
    const std::string log = run.log();
    const std::size_t behind = log.find("Processing unverified matches.\n\n");
    ASSERT_NE(behind, std::string::npos);
    for (const char* home : {"Verifying JVM at C:\\a\\", "Verifying JVM at C:\\b\\"})
        EXPECT_LT(log.find(home), behind) << log;
    EXPECT_NE(log.find("Verifying JVM at C:\\a\\", behind), std::string::npos);

    run.home("e\\c", "1");
    JvmMatchList again;
    run.search().findJvm(again);
    EXPECT_EQ(homes(again), "E:\\c") << "a match of the first file ends the scan";

    first.setValue("SEARCH_ALL", "0");
    JvmMatchList unasked;
    run.search().findJvm(unasked);
    EXPECT_EQ(homes(unasked), "") << "the disks are left alone";
}

TEST_F(DiskSearchTest, FindAllVerifiesEveryHomeForEveryFile) {
    run.addJvmFile("one", "1...");
    run.addJvmFile("any", "...");
    run.home("c\\a", "1.5");
    run.home("c\\b", "2");
    JvmMatchList results;
    run.search().findAll(results);
    EXPECT_EQ(results.count(), 3);
    EXPECT_EQ(text(results.at(0)->home()), "C:\\a");
    // What an earlier scan found is forgotten.
    std::filesystem::remove_all(run.scratch.native("c\\b"));
    JvmMatchList again;
    run.search().findAll(again);
    EXPECT_EQ(again.count(), 2);
    EXPECT_EQ(run.log().find("does not exist"), std::string::npos);
}

TEST_F(DiskSearchTest, ACancelLeavesTheHomesThatWait) {
    run.addJvmFile("one", "1");
    run.home("c\\a", "1");
    run.home("c\\b", "1");
    run.ui().onStep = [&] { run.context().cancelRequested.request(); };
    JvmMatchList results;
    run.search().findAll(results);
    EXPECT_EQ(results.count(), 1) << "the verification under way was finished";
    EXPECT_EQ(run.logged("Verifying JVM at "), "|Verifying JVM at C:\\a\\bin\\java.exe");
}

TEST_F(DiskSearchTest, HintsComeBeforeDisksAndEndAtTheFileThatAsksForThem) {
    TagFile& first = run.addJvmFile("first", "1");
    TagFile& second = run.addJvmFile("second", "2");
    TagFile& third = run.addJvmFile("third", "3");
    first.setValue("PATH_HINT", "\\jdk1");
    second.setValue("PATH_HINT", "\\jdk2");
    second.setValue("SEARCH_ALL", "1");
    third.setValue("PATH_HINT", "\\jdk3");
    run.home("e\\jdk3", "3");
    JvmMatchList results;
    run.search().findJvm(results);
    EXPECT_EQ(homes(results), "E:\\jdk3");
    EXPECT_EQ(run.logged("Checking path hint"),
              "|Checking path hint C:\\jdk1|Checking path hint E:\\jdk1"
              "|Checking path hint C:\\jdk2|Checking path hint E:\\jdk2");
}

}  // namespace
}  // namespace corvane
