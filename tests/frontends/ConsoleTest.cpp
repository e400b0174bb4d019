// The console front end.
#include <gtest/gtest.h>

#include "frontends/ConsoleLauncherUI.h"
#include "support/Payload.h"

namespace corvane {
namespace {

class ConsoleTest : public ::testing::Test {
  protected:
    // What a fresh front end prints for these calls.
    template <class Calls>
    std::string printed(Calls calls) {
        ConsoleLauncherUI ui(arguments);
        ::testing::internal::CaptureStdout();
        calls(ui);
        return ::testing::internal::GetCapturedStdout();
    }

    test::LauncherRun run;
    ArgumentVector arguments;
};

TEST_F(ConsoleTest, StatusLinesAndDots) {
    EXPECT_EQ(printed([](auto& ui) { ui.setStatusDetail("Searching", "C:\\"); }), "\nC:\\\n");
    EXPECT_EQ(printed([](auto& ui) {
                  ui.show();
                  ui.setStatus("a");
                  ui.stepProgress(70);
                  ui.stepProgress(0);
                  ui.stepProgress(-5);
                  ui.setStatus("b");
                  ui.stepProgress(1);
                  ui.showMessage("m");
                  ui.hide(3);
                  ui.setStatus("c");
              }),
              "\na\n" + std::string(70, '.') + "\nb\n.m\nc\n");
}

TEST_F(ConsoleTest, OthersWriteBehindARowAndBehindNothingElse) {
    EXPECT_EQ(printed([](auto& ui) {
                  ui.endRow();
                  ui.stepProgress(2);
                  ui.endRow();
                  ui.endRow();
                  ui.stepProgress(68);
                  ui.endRow();
                  ui.setStatus("a");
                  ui.stepProgress(1);
                  ui.showMessage("m");
                  ui.endRow();
              }),
              "..\n" + std::string(68, '.') + "\na\n.m\n");
}

TEST_F(ConsoleTest, ProgressEndsARowOnlyWhenItMovesOn) {
    EXPECT_EQ(printed([](auto& ui) { ui.setProgress(0); }), "");
    EXPECT_EQ(printed([](auto& ui) {
                  ui.stepProgress(5);
                  ui.setProgress(100);
                  ui.setProgress(100);
                  ui.setProgress(0);
                  ui.setProgress(0);
              }),
              ".....\n\n\n");
    EXPECT_EQ(printed([](auto& ui) {
                  ui.stepProgress(101);
                  ui.setProgress(100);
              }),
              std::string(70, '.') + "\n" + std::string(31, '.'));
}

}  // namespace
}  // namespace corvane
