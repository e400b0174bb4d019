// The status line: stages, details, and their nesting.
#include <gtest/gtest.h>

#include "base/Status.h"
#include "support/TestContext.h"

namespace corvane {
namespace {

using Calls = std::vector<std::string>;

class StatusTest : public ::testing::Test {
  protected:
    test::TestContext run;
};

TEST_F(StatusTest, StagesShowTheTitleWhereTheyNameIt) {
    setStage(Stage::initializing);
    run.ui.currentTitle = "Corvane Wizard";
    setStage(Stage::initializing);
    setStage(Stage::jvmNotFound);
    setStage(static_cast<Stage>(7));
    EXPECT_EQ(run.ui.take(),
              (Calls{"setStatus Initializing ...", "setStatus Initializing Corvane Wizard...",
                     "setStatus Java(tm) Virtual Machine was not found. Corvane Wizard could not "
                     "be launched.",
                     "setStatus"}));
}

TEST_F(StatusTest, DetailsJoinTheStageAndAClearedOneStaysUntilTheNextStage) {
    setStage(Stage::preparingJvm);
    run.ui.take();
    setDetail(Detail::verifying, "C:\\jdk");
    setDetail(Detail::scanningDisks, "");
    setDetail(Detail::searchingFor, "");
    EXPECT_EQ(run.ui.take(),
              (Calls{"setStatusDetail Preparing Java(tm) Virtual Machine...|Verifying C:\\jdk",
                     "setStatusDetail Preparing Java(tm) Virtual Machine...|Scanning disk(s) for "
                     "a Java(tm) Virtual Machine..."}));
    setStage(Stage::searchingForJvm);
    EXPECT_EQ(run.ui.take(), Calls{"setStatus Searching for Java(tm) Virtual Machine..."});
    setDetail(Detail::searchingFor, "Java 21");
    setStage(Stage::searchingForJvm);
    EXPECT_EQ(run.ui.take().back(),
              "setStatusDetail Searching for Java(tm) Virtual Machine...|Searching for Java 21");
}

TEST_F(StatusTest, AScopePutsBackWhatItFound) {
    setDetail(Detail::searchingFor, "y");
    run.ui.take();
    {
        const StatusScope outer;
        setDetail(Detail::verifying, "x");
        const StatusScope inner;
        setDetail(Detail::scanningDisks, "");
    }
    EXPECT_EQ(run.ui.take().back(), "setStatusDetail |Searching for y");
    EXPECT_EQ(currentStatus().kind, Detail::searchingFor);
    EXPECT_EQ(test::text(currentStatus().text), "y");
}

TEST_F(StatusTest, SilenceChangesNothing) {
    run.context.silent = true;
    setStage(Stage::running);
    setDetail(Detail::verifying, "x");
    EXPECT_TRUE(run.ui.calls.empty());
    EXPECT_EQ(run.context.stageMessageId, -1);
    EXPECT_EQ(run.context.detailMessageId, -1);
}

}  // namespace
}  // namespace corvane
