// FIND_JVM, VERIFY and the actions of an input file.
#include <gtest/gtest.h>

#include "app/base/Messages.h"
#include "instructions/variables/VariableTable.h"
#include "jvm/search/SearchFlows.h"
#include "jvmsearch/SearchRun.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;
using Calls = std::vector<std::string>;

class SearchFlowsTest : public ::testing::Test {
  protected:
    SearchFlowsTest() {
        run.addJvmFile("Java 17", "17...");
        variables.setNumericValue(1, 9);
        variables.setStringValue(1, "old home");
        variables.setStringValue(2, "old file");
    }

    // N1, S1 and S2; the home within the scratch directory shown as $.
    std::string results() {
        std::string out = std::to_string(variables.numericValue(1));
        for (const std::int32_t number : {1, 2}) {
            std::string value = text(variables.stringValue(number));
            if (value.starts_with(text(run.scratch.path())))
                value.replace(0, run.scratch.path().length(), "$");
            out += "|" + value.substr(0, value.find("LRE") == std::string::npos
                                             ? value.size()
                                             : value.find("LRE") + 3);
        }
        return out;
    }

    // What `action` prints on standard output.
    std::string printed(auto&& action) {
        ::testing::internal::CaptureStdout();
        action();
        std::string out = ::testing::internal::GetCapturedStdout();
        std::erase(out, '\r');
        return out;
    }

    test::SearchRun run;
    VariableTable variables;
};

TEST_F(SearchFlowsTest, FindJvmLeavesHomeAndFile) {
    run.context().javaHome = run.home("jdk", "17.0.1");
    runFindJvm(true, false);
    EXPECT_EQ(results(), "1|$\\jdk|$\\temp\\LRE");
    const TagFile resolved(variables.stringValue(2));
    EXPECT_EQ(text(resolved.value("JVM_HOME", 0)), text(run.context().javaHome));
    EXPECT_EQ(run.context().tempFiles.count(), 1);
    const Calls calls = run.ui().take();
    EXPECT_EQ(calls.at(0), "setStatus Searching for Java(tm) Virtual Machine...");
    EXPECT_EQ(calls.at(1), "show");
    EXPECT_NE(run.log().find("Matching JVM home is " + text(run.context().javaHome) +
                             "\nMatching JVM file is " + text(variables.stringValue(2))),
              std::string::npos);
    // A second search starts afresh.
    run.context().javaHome = "";
    runFindJvm(false, false);
    EXPECT_EQ(results(), "0||");
    EXPECT_EQ(run.ui().take().front(), "hide 0");
}

TEST_F(SearchFlowsTest, ASearchThatCannotGoOnIsReported) {
    run.addJvmFile("bad", "1").setValue("PLATFORM_HINT", "HKX\\a\\b");
    const std::string words = "Invalid hive (HKX) specified in platform hint (HKX\\a\\b).";
    const std::string full = text(loadMessage(CatalogueText::selectJvm)) + " " + words;
    EXPECT_EQ(failureOf([] { runFindJvm(false, true); }), words);
    EXPECT_EQ(run.ui().messages(), full);
    EXPECT_EQ(run.logged("ERROR: "), "|ERROR: " + full);
    EXPECT_EQ(results(), "0||");
    EXPECT_EQ(printed([] { searchAction(false, false); }), "") << "it ends silently";
}

TEST_F(SearchFlowsTest, WhoCancelsIsNotAskedForAJvm) {
    run.context().cancelRequested.request();
    runFindJvm(false, true);
    EXPECT_EQ(results(), "0||");
    EXPECT_EQ(run.ui().messages(), "");
}

TEST_F(SearchFlowsTest, SearchPrintsItsResult) {
    EXPECT_EQ(printed([] { searchAction(false, false); }), "0\n");
    EXPECT_EQ(run.scratch.list(), (Calls{"run.log", "setup.exe", "temp"}));
    run.context().javaHome = run.home("jdk", "17");
    const std::string out = printed([] { searchAction(false, false); });
    EXPECT_EQ(
        out, "1\n" + text(variables.stringValue(1)) + "\n" + text(variables.stringValue(2)) + "\n");
    EXPECT_EQ(run.context().tempFiles.count(), 0) << "the file outlives the run";
}

TEST_F(SearchFlowsTest, SearchAllPrintsAFailureAsNone) {
    run.context().tempDir = run.scratch.path("none");
    EXPECT_EQ(printed([] { searchAllAction(true, true); }), "0\n");
    EXPECT_EQ(run.ui().messages().find("Unable to search for all JVMs. Cannot use "), 0u);
}

TEST_F(SearchFlowsTest, VerifyTakesAnEntryOfTheIndex) {
    auto entry = std::make_unique<FileIndexEntry>();
    entry->id = 5;
    entry->name = "a.jvm";
    entry->type = FileType::classpathFile;
    FileIndexEntry& file = *run.files().add(std::move(entry));
    EXPECT_EQ(failureOf([] { runVerifyCommand(false, false, 4); }),
              "Cannot verify jvm file at index 4 because it does not exist.");
    EXPECT_EQ(failureOf([] { runVerifyCommand(false, false, 5); }),
              "To verify a JVM, use an index of a jvm file. The index passed in was 5 which "
              "corresponds to the file named a.jvm");
    file.type = FileType::jvmFile;
    EXPECT_EQ(failureOf([] { runVerifyCommand(false, false, 5); }),
              "The jvm file with file id 5 could not be read.");

    file.tags = std::make_unique<TagFile>();
    test::SearchRun::describe(*file.tags, "d", "17");
    run.ui().take();
    runVerifyCommand(false, true, 5);
    EXPECT_EQ(results(), "0|old home|old file");
    EXPECT_EQ(run.ui().messages(), "The JVM is not valid.");
    EXPECT_EQ(run.logged("In VERIFY"), "|In VERIFY, the jvm is invalid.");

    file.tags->setValue("JVM_HOME", run.home("jdk", "17"));
    runVerifyCommand(true, true, 5);
    EXPECT_EQ(results(), "1|$\\jdk|old file");
    EXPECT_EQ(run.logged("After VERIFY"),
              "|After VERIFY, the jvm home is " + text(run.scratch.path("jdk")));
    // The user's home takes the place of the file's own, and asks for no properties.
    file.tags->setValue("JVM_PROPERTIES", "");
    run.context().javaHome = run.scratch.path("jdk");
    runVerifyCommand(false, false, 5);
    EXPECT_EQ(results(), "1|$\\jdk|old file");
}

}  // namespace
}  // namespace corvane
