// FIND_JVM and VERIFY.
#include <gtest/gtest.h>

#include "jvmsearch/JvmAdvice.h"
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
    run.ui().take();
    runVerifyCommand(true, false, 5);
    EXPECT_EQ(run.ui().take()[1], "show");
    EXPECT_EQ(results(), "0|old home|old file");
    // The user's home takes the place of the file's own, and asks for no properties.
    file.tags->setValue("JVM_PROPERTIES", "");
    run.context().javaHome = run.home("jdk", "17");
    runVerifyCommand(false, false, 5);
    EXPECT_EQ(run.ui().take().front(), "hide 0");
    EXPECT_EQ(results(), "1|" + text(run.context().javaHome) + "|old file");
}

// Of each home the latest reason, and of the homes the first eight.
TEST_F(SearchFlowsTest, TheAdviceTellsWhatWasRefused) {
    TagFile tags;
    tags.setValue("MESSAGE", "Get Java.");
    EXPECT_EQ(text(jvmAdvice(JvmMessage(tags))), "Get Java.");
    tags.setValue("DETAILS", "1");
    const JvmMessage message(tags);
    EXPECT_EQ(text(jvmAdvice(message)), "Get Java.") << "nothing is refused yet";
    const String old = run.home("old", "1.7");
    for (const char* const pattern : {"21", "17..."})
        run.addJvmFile(pattern, pattern).setValue("PATH_HINT", "\\none");
    for (const String& home : {old, test::makeJavaHome(run.scratch, "silent", "silent\n")}) {
        run.context().javaHome = home;
        JvmMatchList none;
        run.search().findJvm(none);
    }
    std::string expected = "Get Java.\n\n" + text(old) + ": version = 1.7 (required: 17...)\n" +
                           text(run.scratch.path("silent")) + ": could not be started";
    EXPECT_EQ(text(jvmAdvice(message)), expected);
    for (int i = 0; i < 9; ++i) {
        const std::string home = "h" + std::to_string(i);
        noteRefusal({home.c_str(), "p", ">= 2", "1"});
        if (i < 6)
            expected += "\n" + home + ": p = 1 (required: >= 2)";
    }
    EXPECT_EQ(text(jvmAdvice(message)), expected);
    run.context().javaHome = "";
    runFindJvm(false, false);
    EXPECT_EQ(run.context().refusals.count(), 0) << "a search begins afresh";
}

}  // namespace
}  // namespace corvane
