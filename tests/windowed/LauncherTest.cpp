// The launcher with the windowed front end, whole: a packed file is started, and what its user
// would see and do is checked and done.
#include <gtest/gtest.h>

#include <algorithm>

#include "windowed/Launched.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using test::Desktop;
using test::Launched;
using test::LauncherPlan;
using test::waitFor;

constexpr const char* title = "Corvane Wizard";
constexpr const char* verifying = "Searching for Java(tm) Virtual Machine... Verifying Java 21";

RECT rectangleOf(HWND window) {
    RECT rectangle{};
    GetWindowRect(window, &rectangle);
    return rectangle;
}

// Chooses a file in the system's dialog.
void pickFile(const Desktop& desktop, const String& path) {
    constexpr int nameField = 0x47C;
    const HWND dialog = desktop.waitForQuestion();
    ASSERT_TRUE(waitFor([&] { return GetDlgItem(dialog, nameField) != nullptr; }));
    SendDlgItemMessageA(dialog, nameField, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.cstr()));
    Desktop::answer(dialog, IDOK);
}

class KindTest : public ::testing::TestWithParam<std::uint8_t> {};
INSTANTIATE_TEST_SUITE_P(Kinds, KindTest, ::testing::Values(0, 1, 2));

TEST_P(KindTest, DialogStatusAndDelayedHiding) {
    Launched launcher({.script = "ILAUNCH 100 0\n"
                                 "INITIALIZE_UI\n"
                                 "ILAUNCH 100 0\n"
                                 "FIND_JVM 1 0\n"
                                 "LAUNCH @S2@ 1\n",
                       .kind = GetParam(),
                       .namesTheHome = true});
    const Desktop& desktop = launcher.desktop();

    // Nothing is to be seen before the script asks for it.
    ASSERT_TRUE(launcher.awaitChild(1));
    const HWND dialog = desktop.progressDialog();
    ASSERT_NE(dialog, nullptr);
    EXPECT_FALSE(desktop.anythingVisible());
    EXPECT_EQ(desktop.status(), "");
    EXPECT_EQ(Desktop::textOf(dialog), title);
    launcher.release(1);

    ASSERT_TRUE(launcher.awaitChild(2));
    EXPECT_EQ(desktop.status(), "Initializing Corvane Wizard...");
    EXPECT_FALSE(desktop.anythingVisible()) << "hidden again by the launch";
    launcher.release(2);

    ASSERT_TRUE(launcher.awaitChild(3));
    EXPECT_TRUE(IsWindowVisible(dialog));
    EXPECT_FALSE(IsWindowVisible(desktop.mainWindow()));
    EXPECT_EQ(desktop.status(), verifying);
    const RECT frame = rectangleOf(dialog);
    EXPECT_NEAR(frame.left + frame.right, GetSystemMetrics(SM_CXSCREEN), 1);
    EXPECT_NEAR(frame.top + frame.bottom, GetSystemMetrics(SM_CYSCREEN), 1);
    const HWND text = desktop.control(DialogControl::text);
    const bool tall = GetParam() == 0;
    EXPECT_EQ(IsWindowVisible(text) != FALSE, tall);
    EXPECT_EQ(Desktop::textOf(text),
              "The Corvane Wizard is preparing the installation, please wait...");
    EXPECT_EQ(rectangleOf(text).bottom <= rectangleOf(desktop.control(DialogControl::status)).top,
              tall);
    launcher.release(3, "out 1739021872");

    ASSERT_TRUE(launcher.awaitChild(4));
    EXPECT_TRUE(waitFor([&] { return desktop.status() == "Running Corvane Wizard..."; }));
    EXPECT_TRUE(waitFor([&] { return !IsWindowVisible(dialog); })) << "the child still runs";
    launcher.release(4, "exit 3");
    EXPECT_EQ(launcher.exitValue(), 3);
}

TEST(LauncherTest, ExitValuesAndTheFailureText) {
    const struct {
        const char* exit;
        std::uint8_t kind;
        std::vector<std::string> arguments;
        std::int32_t value;
        bool shown;
    } cases[] = {
        {"0", 0, {}, 0, false},       {"-1", 0, {}, -1, true},
        {"3", 1, {}, 3, true},        {"3", 0, {"-cv:silent"}, 3, false},
        {"1000", 0, {}, 1000, false}, {"1000", 1, {}, 1000, true},
        {"1000", 2, {}, 1000, false},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(std::string(row.exit) + " of kind " + std::to_string(row.kind));
        Launched launcher({.script = "INITIALIZE_UI\nILAUNCH 100 60\n",
                           .kind = row.kind,
                           .arguments = row.arguments});
        const Desktop& desktop = launcher.desktop();
        ASSERT_TRUE(launcher.awaitChild(1));
        launcher.release(1, std::string("err It went wrong – ü\nexit ") + row.exit);
        if (row.shown) {
            const HWND box = desktop.waitForQuestion();
            EXPECT_EQ(Desktop::messageOf(box), "It went wrong – ü\r\n");
            EXPECT_EQ(Desktop::textOf(box), title);
            EXPECT_EQ(GetWindow(box, GW_OWNER), desktop.progressDialog());
            // The run is over, and with it the timers.
            EXPECT_TRUE(IsWindowVisible(desktop.progressDialog()));
            const std::int32_t position = desktop.barPosition();
            EXPECT_FALSE(waitFor([&] { return desktop.barPosition() != position; }, 300ms));
            Desktop::answer(box);
        }
        EXPECT_EQ(launcher.exitValue(), row.value);
    }
}

TEST(LauncherTest, AFailureOfTheRunIsShownAndEndsWithMinusOne) {
    Launched launcher({.script = "NONSENSE\n"});
    const HWND box = launcher.desktop().waitForQuestion();
    EXPECT_EQ(Desktop::messageOf(box),
              "Error in instructions. Invalid command (NONSENSE).  Line number (1)");
    EXPECT_EQ(Desktop::textOf(box), title);
    Desktop::answer(box);
    EXPECT_EQ(launcher.exitValue(), -1);
}

TEST(LauncherTest, ACancelEndsAnExtraction) {
    // Takes longer to copy than a close takes to arrive.
    const std::string big(192 << 20, 'x');
    Launched launcher({.script = "INITIALIZE_UI\nILAUNCH 100 60\n",
                       .command = "%CP%()",
                       .files = {{FileType::classpathFile, "big.jar", big}}});
    const Desktop& desktop = launcher.desktop();
    const auto temp = launcher.scratch.native("temp");
    const auto copying = [](const std::string& path) { return path.ends_with("\\big.jar"); };
    ASSERT_TRUE(waitFor([&] {
        const std::vector<std::string> paths = launcher.scratch.list();
        return std::any_of(paths.begin(), paths.end(), copying);
    }));
    PostMessageA(desktop.progressDialog(), WM_CLOSE, 0, 0);
    const HWND box = desktop.waitForQuestion();
    EXPECT_EQ(Desktop::messageOf(box), "Canceled by the user.");
    EXPECT_TRUE(IsWindowVisible(desktop.progressDialog()));
    Desktop::answer(box);
    EXPECT_EQ(launcher.exitValue(), -1);
    EXPECT_TRUE(std::filesystem::is_empty(temp));
    EXPECT_FALSE(launcher.childStarted(1));
}

// The disks are those of the Wine prefix; they hold two homes of the same JVM, whose children both
// are no JVM. A walk that nobody ends meets both, and then the user is asked.
TEST(LauncherTest, ACancelEndsADiskWalk) {
    ASSERT_NE(GetDriveTypeA("Z:\\"), static_cast<UINT>(DRIVE_FIXED))
        << "this would walk the whole host";
    const LauncherPlan plan{.script = "FIND_JVM 1 1\nJMP0 @N1@ END\nLAUNCH @S2@ 0\n:END\n",
                            .jvmTags = "SEARCH_ALL: 1\n",
                            .homes = {"home", "other"}};
    for (const bool cancel : {false, true}) {
        SCOPED_TRACE(cancel);
        Launched launcher(plan);
        const Desktop& desktop = launcher.desktop();
        ASSERT_TRUE(launcher.awaitChild(1));
        EXPECT_TRUE(IsWindowVisible(desktop.progressDialog()));
        EXPECT_EQ(desktop.status(), verifying);
        if (cancel)
            SendMessageA(desktop.progressDialog(), WM_CLOSE, 0, 0);
        launcher.release(1);
        if (!cancel) {
            ASSERT_TRUE(launcher.awaitChild(2));
            launcher.release(2);
            EXPECT_EQ(Desktop::messageOf(desktop.waitForQuestion()),
                      "A suitable JVM could not be found. Please select a JVM by selecting its "
                      "java.exe file.");
            EXPECT_EQ(desktop.status(),
                      "Searching for Java(tm) Virtual Machine... "
                      "Scanning disk(s) for a Java(tm) Virtual Machine...");
            Desktop::answer(desktop.question());
            launcher.addChild("picked\\bin\\java.exe");
            pickFile(desktop, launcher.scratch.path("picked\\bin\\java.exe"));
            ASSERT_TRUE(launcher.awaitChild(3));
            launcher.release(3, "exit 3");
        }
        EXPECT_EQ(launcher.exitValue(), cancel ? 0 : 3) << launcher.log();
        EXPECT_EQ(launcher.childStarted(2), !cancel);
    }
}

// The system's message to every program at the end of a session: what was unpacked goes, though the
// child still runs.
TEST(LauncherTest, TheEndOfTheSessionRemovesWhatWasUnpacked) {
    Launched launcher({.script = "ILAUNCH 100 0\n",
                       .command = "%CP%()",
                       .files = {{FileType::classpathFile, "some.jar", "x"}}});
    const auto temp = launcher.scratch.native("temp");
    ASSERT_TRUE(launcher.awaitChild(1));
    EXPECT_FALSE(std::filesystem::is_empty(temp));
    SendMessageA(launcher.desktop().mainWindow(), WM_ENDSESSION, TRUE, 0);
    EXPECT_TRUE(std::filesystem::is_empty(temp));
    launcher.release(1, "exit 5");
    EXPECT_EQ(launcher.exitValue(), 5);
}

// Asked for a directory, the user declines, and the script goes on.
TEST(LauncherTest, TheDirectoryForAJvmIsAskedFor) {
    Launched launcher({.script = "INSTALL_JVM 2\nILAUNCH 100 0\n",
                       .files = {{FileType::jvmInstaller, "installer.exe", "x"}}});
    const Desktop& desktop = launcher.desktop();
    const HWND question = desktop.waitForQuestion();
    EXPECT_EQ(desktop.status(), "Preparing Java(tm) Virtual Machine...");
    EXPECT_EQ(GetWindow(question, GW_OWNER), desktop.progressDialog());
    Desktop::answer(question, IDCANCEL);
    ASSERT_TRUE(launcher.awaitChild(1));
    launcher.release(1);
    EXPECT_EQ(launcher.exitValue(), 0);
}

}  // namespace
}  // namespace corvane
