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

    // What a search finds, or one for all.
    std::string found(bool all = false) {
        JvmMatchList results;
        if (all)
            run.search().findAll(results);
        else
            run.search().findJvm(results);
        std::string out;
        for (const JvmMatch& match : results)
            out += "|" + text(match.home());
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
    for (const char* name : {"c\\1\\java", "c\\2\\java", "e\\java"})
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

// What the others accept waits for the end of the scan: tests/endtoend/cases/actions.
TEST_F(DiskSearchTest, AMatchOfTheFirstFileEndsTheScan) {
    TagFile& first = run.addJvmFile("first", "1");
    run.addJvmFile("second", "2");
    for (const char* name : {"c\\a", "e\\a"})
        run.home(name, "2");
    run.home("e\\b", "1");
    EXPECT_EQ(found(), "") << "nobody asks for the disks";
    first.setValue("SEARCH_ALL", "1");
    EXPECT_EQ(found(), "|E:\\b");
    EXPECT_EQ(run.logged("Processing unverified") + run.logged("Checking user specified"), "");
    EXPECT_TRUE(run.search().onExecutableFound("E:\\b\\bin\\java.exe"));
    EXPECT_FALSE(run.search().onExecutableFound("E:\\b\\bin\\java.exe")) << "one is enough";
    first.setValue("JVM_PROPERTIES", "version=3");
    EXPECT_EQ(found(), "|C:\\a") << "a search starts afresh, and takes the first";
}

TEST_F(DiskSearchTest, FindAllVerifiesEveryHomeForEveryFileUntilACancel) {
    run.addJvmFile("one", "1...");
    run.addJvmFile("any", "...");
    run.home("c\\a", "1.5");
    EXPECT_EQ(found(true), "|C:\\a|C:\\a");
    // What an earlier scan found is forgotten.
    std::filesystem::rename(run.scratch.native("c\\a"), run.scratch.native("c\\b"));
    EXPECT_EQ(found(true), "|C:\\b|C:\\b");
    EXPECT_EQ(run.log().find("does not exist"), std::string::npos);

    run.ui().onStep = [&] { run.context().cancelRequested.request(); };
    EXPECT_EQ(found(true), "|C:\\b") << "the verification under way was finished";
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
    EXPECT_EQ(found(), "|E:\\jdk3");
    EXPECT_EQ(run.logged("Checking path hint"),
              "|Checking path hint C:\\jdk1|Checking path hint E:\\jdk1"
              "|Checking path hint C:\\jdk2|Checking path hint E:\\jdk2");
    run.home("c\\jdk2", "2");
    EXPECT_EQ(found(), "|C:\\jdk2");
    EXPECT_EQ(run.logged("Beginning"), "|Beginning exhaustive search") << "that of before";
}

}  // namespace
}  // namespace corvane
