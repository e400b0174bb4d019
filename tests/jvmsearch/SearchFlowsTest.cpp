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
        variables.setNumericValue(foundVariable, 9);
        variables.setStringValue(homeVariable, "old home");
        variables.setStringValue(jvmFileVariable, "old file");
    }

    // N1, S1 and S2.
    std::string results() {
        return std::to_string(variables.numericValue(foundVariable)) + "|" +
               text(variables.stringValue(homeVariable)) + "|" +
               text(variables.stringValue(jvmFileVariable));
    }

    test::SearchRun run;
    VariableTable variables;
};

// What a search that succeeds leaves is in tests/endtoend/cases/actions.
TEST_F(SearchFlowsTest, FindJvmStartsAfreshAndDoesNotAskWhoCancels) {
    run.context().cancelRequested.request();
    runFindJvm(false, true);
    EXPECT_EQ(results(), "0||");
    EXPECT_EQ(run.ui().take(), std::vector<std::string>{"hide 0"});
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
    // The user's home takes the place of the file's own, and asks for no properties.
    file.tags->setValue("JVM_PROPERTIES", "");
    run.context().javaHome = run.home("jdk", "17");
    runVerifyCommand(false, false, 5);
    EXPECT_EQ(results(), "1|" + text(run.context().javaHome) + "|old file");
}

}  // namespace
}  // namespace corvane
