// The layer in front of the front end, where silence takes effect.
#include <gtest/gtest.h>

#include "base/Ui.h"
#include "support/TestContext.h"

namespace corvane {
namespace {

using Calls = std::vector<std::string>;

Calls callEverything(test::TestContext& run) {
    uiStepProgress(2);
    uiSetProgress(50);
    uiShowOrHide();
    uiHide(3);
    uiShowMessage("m");
    run.ui.chosenDirectory = "D:\\x";
    run.ui.calls.push_back("chosen " + test::text(uiChooseDirectory()));
    return run.ui.take();
}

TEST(UiTest, SilenceStopsAllButHiding) {
    test::TestContext run;
    EXPECT_EQ(callEverything(run),
              (Calls{"show", "hide 3", "showMessage m", "chooseDirectory", "chosen D:\\x"}));
    EXPECT_EQ(run.ui.steps, 2);
    EXPECT_EQ(run.ui.progress, 50);

    uiSetSilent(true);
    EXPECT_EQ(callEverything(run), (Calls{"hide 0", "hide 3", "chosen "}));
    EXPECT_EQ(run.ui.steps, 2);
    uiSetSilent(false);
    run.context.ui = nullptr;
    EXPECT_NO_THROW(uiShowMessage("nobody is there"));
}

}  // namespace
}  // namespace corvane
