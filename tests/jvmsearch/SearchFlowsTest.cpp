// FIND_JVM and VERIFY.
#include <gtest/gtest.h>

#include "jvmsearch/SearchFlows.h"
#include "jvmsearch/SearchRun.h"
#include "variables/VariableTable.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;

class SearchFlowsTest : public ::testing::Test {
  protected:
    SearchFlowsTest() {
        run.addJvmFile("Java 21", "21...");
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
            out += "|" + value.substr(0, value.rfind("LRE"));
        }
        return out;
    }

    test::SearchRun run;
    VariableTable variables;
};

TEST_F(SearchFlowsTest, FindJvmLeavesHomeAndFile) {
    run.context().javaHome = run.home("jdk", "17.0.1");
    runFindJvm(true, false);
    EXPECT_EQ(results(), "1|$\\jdk|$\\temp\\");
    const TagFile resolved(variables.stringValue(2));
    EXPECT_EQ(text(resolved.value("JVM_HOME", 0)), text(run.context().javaHome));
    EXPECT_EQ(run.context().tempFiles.count(), 1);
    EXPECT_EQ(run.ui().take().at(1), "show");
    // A second search starts afresh.
    run.context().javaHome = "";
    runFindJvm(false, false);
    EXPECT_EQ(results(), "0||");
    EXPECT_EQ(run.ui().take().front(), "hide 0");
}

TEST_F(SearchFlowsTest, WhoCancelsIsNotAskedForAJvm) {
    run.context().cancelRequested.request();
    runFindJvm(false, true);
    EXPECT_EQ(results(), "0||");
    EXPECT_EQ(run.ui().messages(), "");
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
    runVerifyCommand(false, false, 5);
    EXPECT_EQ(results(), "0|old home|old file");

    file.tags->setValue("JVM_HOME", run.home("jdk", "17"));
    runVerifyCommand(true, true, 5);
    EXPECT_EQ(results(), "1|$\\jdk|old file");
    // The user's home takes the place of the file's own, and asks for no properties.
    file.tags->setValue("JVM_PROPERTIES", "");
    run.context().javaHome = run.scratch.path("jdk");
    runVerifyCommand(false, false, 5);
    EXPECT_EQ(results(), "1|$\\jdk|old file");
}

}  // namespace
}  // namespace corvane
