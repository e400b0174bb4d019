// The launcher with the windowed front end, whole: a packed file is started, and what its user
// would see and do is checked and done.
#include <gtest/gtest.h>

#include "windowed/Launched.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using test::Desktop;
using test::Launched;
using test::waitFor;

constexpr const char* title = "Corvane Wizard";
constexpr const char* verifying = "Searching for Java(tm) Virtual Machine... Verifying Java 21";

// Chooses a file in the system's dialog.
void pickFile(const Desktop& desktop, const String& path) {
    constexpr int nameField = 0x47C;
    const HWND dialog = desktop.waitForQuestion();
    ASSERT_TRUE(waitFor([&] { return GetDlgItem(dialog, nameField) != nullptr; }));
    SendDlgItemMessageA(dialog, nameField, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.cstr()));
    Desktop::answer(dialog, IDOK);
}

// While it lives, the system opens web addresses by this command.
class Browser {
  public:
    explicit Browser(const std::string& command) {
        DWORD size = sizeof former_;
        RegGetValueA(HKEY_CLASSES_ROOT, key, nullptr, RRF_RT_REG_SZ, nullptr, former_, &size);
        set(command);
    }
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;
    ~Browser() { set(former_); }

  private:
    static constexpr const char* key = "https\\shell\\open\\command";

    static void set(const std::string& command) {
        RegSetKeyValueA(HKEY_CLASSES_ROOT, key, nullptr, REG_SZ, command.c_str(),
                        static_cast<DWORD>(command.size() + 1));
    }

    char former_[MAX_PATH] = "";
};

class KindTest : public ::testing::TestWithParam<std::uint8_t> {};
INSTANTIATE_TEST_SUITE_P(Kinds, KindTest, ::testing::Values(0, 1));

TEST_P(KindTest, DialogStatusAndDelayedHiding) {
    Launched launcher({.script = "ILAUNCH 100 0\n"
                                 "INITIALIZE_UI\n"
                                 "ILAUNCH 100 0\n"
                                 "FIND_JVM 1 0\n"
                                 "LAUNCH @S2@ 1\n",
                       .kind = GetParam(),
                       .namesTheHome = true});
    const Desktop& desktop = launcher.desktop();

    ASSERT_TRUE(launcher.awaitChild(1));
    const HWND dialog = desktop.progressDialog();
    ASSERT_NE(dialog, nullptr);
    EXPECT_FALSE(desktop.anythingVisible()) << "the script hasn't asked for it";
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
    RECT frame{};
    GetWindowRect(dialog, &frame);
    EXPECT_NEAR(frame.left + frame.right, GetSystemMetrics(SM_CXSCREEN), 1);
    EXPECT_NEAR(frame.top + frame.bottom, GetSystemMetrics(SM_CYSCREEN), 1);
    const HWND text = desktop.control(DialogControl::text);
    EXPECT_EQ(IsWindowVisible(text) != FALSE, GetParam() == 0) << "only the tall dialog has it";
    EXPECT_EQ(Desktop::textOf(text),
              "The Corvane Wizard is preparing the installation, please wait...");
    launcher.release(3, "out 1739021872");

    ASSERT_TRUE(launcher.awaitChild(4));
    EXPECT_TRUE(waitFor([&] { return desktop.status() == "Running Corvane Wizard..."; }));
    EXPECT_TRUE(waitFor([&] { return !IsWindowVisible(dialog); })) << "the child still runs";
    launcher.release(4, "exit 3");
    EXPECT_EQ(launcher.exitValue(), 3);
}

TEST(LauncherTest, ExitValuesAndTheFailureText) {
    const struct {
        std::string exit;
        std::uint8_t kind;
        const char* arguments;
        std::int32_t value;
        bool shown;
    } cases[] = {
        {"-1", 0, "", -1, true},     {"3", 0, "-cv:silent", 3, false}, {"1000", 0, "", 1000, false},
        {"1000", 1, "", 1000, true}, {"1000", 2, "", 1000, false},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.exit + " of kind " + std::to_string(row.kind));
        Launched launcher({.script = "INITIALIZE_UI\nILAUNCH 100 60\n",
                           .kind = row.kind,
                           .arguments = row.arguments});
        const Desktop& desktop = launcher.desktop();
        ASSERT_TRUE(launcher.awaitChild(1));
        launcher.release(1, "err It went wrong – ü\nexit " + row.exit);
        if (row.shown) {
            const HWND box = desktop.waitForQuestion();
            EXPECT_EQ(Desktop::messageOf(box), "It went wrong – ü\r\n");
            EXPECT_EQ(Desktop::textOf(box), title);
            EXPECT_EQ(GetWindow(box, GW_OWNER), desktop.progressDialog());
            EXPECT_TRUE(IsWindowVisible(desktop.progressDialog()));
            const std::int32_t position = desktop.barPosition();
            EXPECT_FALSE(waitFor([&] { return desktop.barPosition() != position; }, 300ms))
                << "the run is over, and with it the timers";
            Desktop::answer(box);
        }
        EXPECT_EQ(launcher.exitValue(), row.value);
    }
}

// A cancel changes nothing for the child that runs; it ends the extraction for the next one.
TEST(LauncherTest, ACancelEndsAnExtraction) {
    Launched launcher(
        {.script = "INITIALIZE_UI\nILAUNCH 100 60\nILAUNCH 100 60\n", .library = "x"});
    const Desktop& desktop = launcher.desktop();
    ASSERT_TRUE(launcher.awaitChild(1));
    SendMessageA(desktop.progressDialog(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(IsWindowVisible(desktop.progressDialog()));
    launcher.release(1);
    const HWND box = desktop.waitForQuestion();
    EXPECT_EQ(Desktop::messageOf(box), "Canceled by the user.");
    EXPECT_TRUE(IsWindowVisible(desktop.progressDialog()));
    Desktop::answer(box);
    EXPECT_EQ(launcher.exitValue(), -1);
    EXPECT_TRUE(std::filesystem::is_empty(launcher.scratch.native("temp")));
    EXPECT_FALSE(launcher.childStarted(2));
}

// The disks are those of the Wine prefix, with the two homes, whose children both are no JVM. A
// walk that nobody ends meets both, and then the user is asked.
TEST(LauncherTest, ACancelEndsADiskWalk) {
    ASSERT_NE(GetDriveTypeA("Z:\\"), static_cast<UINT>(DRIVE_FIXED))
        << "this would walk the whole host";
    for (const bool cancel : {false, true}) {
        SCOPED_TRACE(cancel);
        Launched launcher({.script = "FIND_JVM 1 1\nJMP0 @N1@ END\nLAUNCH @S2@ 0\n:END\n"});
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

// Two homes that won't do, and an address, for which a program of the test's is the browser.
TEST(LauncherTest, WhoHasNoJvmReadsWhyAndCanOpenTheAddress) {
    constexpr const char* address = "https://example.org/java?a=1&b=2";
    Launched launcher({.script = "FIND_JVM 1 0\nINSTALL_JVM 1\n",
                       .message = "MESSAGE: Hello needs Java 21.\nDETAILS: 1\nLINK: " +
                                  std::string(address) + "\n"});
    const Browser browser("cmd /c echo \"%1\">\"" + test::text(launcher.scratch.path("opened")) +
                          "\"");
    ASSERT_TRUE(launcher.awaitChild(1));
    launcher.release(1, "out 1739021872\nout 1.8.0_392");
    ASSERT_TRUE(launcher.awaitChild(2));
    launcher.release(2);
    const HWND box = launcher.desktop().waitForQuestion();
    EXPECT_EQ(Desktop::textOf(box), title);
    const HWND link = FindWindowExA(box, nullptr, "SysLink", nullptr);
    const std::string text = Desktop::textOf(link);
    EXPECT_TRUE(text.starts_with("Hello needs Java 21.")) << text;
    for (const char* const line :
         {": java.version = 1.8.0_392 (required: 21...)\n", ": could not be started\n"})
        EXPECT_NE(text.find(line), std::string::npos) << text;
    RECT area{};
    GetClientRect(link, &area);
    for (const UINT message : {UINT{WM_LBUTTONDOWN}, UINT{WM_LBUTTONUP}})
        SendMessageA(link, message, 0, MAKELPARAM(area.left + 8, area.bottom - 8));
    const std::string opened = "\"" + std::string(address) + "\"\n";
    EXPECT_TRUE(waitFor([&] { return launcher.scratch.readText("opened") == opened; }))
        << launcher.scratch.readText("opened");
    Desktop::answer(box);
    EXPECT_EQ(launcher.exitValue(), -1);
}

// The system's message to every program at the end of a session: what was unpacked goes, though the
// child still runs.
TEST(LauncherTest, TheEndOfTheSessionRemovesWhatWasUnpacked) {
    Launched launcher({.script = "ILAUNCH 100 0\n", .library = "x"});
    const auto temp = launcher.scratch.native("temp");
    ASSERT_TRUE(launcher.awaitChild(1));
    EXPECT_FALSE(std::filesystem::is_empty(temp));
    SendMessageA(launcher.desktop().mainWindow(), WM_ENDSESSION, TRUE, 0);
    EXPECT_TRUE(std::filesystem::is_empty(temp));
    launcher.release(1, "exit 5");
    EXPECT_EQ(launcher.exitValue(), 5);
}

}  // namespace
}  // namespace corvane
