// `WindowsLauncherUI` by itself: the test's own thread plays the worker.
#include <gtest/gtest.h>

#include <future>
#include <set>
#include <thread>

#include "app/base/Messages.h"
#include "app/frontends/windowed/WindowsLauncherUI.h"
#include "support/Payload.h"
#include "windowed/Desktop.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using test::text;
using test::waitFor;

// A front end whose main thread is a thread of its own, with no run unless the test asks for it.
class FrontEndTest : public ::testing::Test {
  protected:
    FrontEndTest() {
        context().ui = &ui;
        context().moduleHandle = GetModuleHandleA(nullptr);
        context().workerPending = false;
    }
    ~FrontEndTest() override {
        if (mainThread.joinable())
            end(0);
    }

    RunContext& context() { return run.context(); }
    HWND dialog() { return static_cast<HWND>(context().dialogWindow); }
    HWND mainWindow() { return static_cast<HWND>(context().mainWindow); }

    void start() {
        std::promise<bool> ready;
        mainThread = std::thread([this, &ready] {
            ready.set_value(ui.init(context().moduleHandle, 5));
            exitValue = ui.run();
        });
        ASSERT_TRUE(ready.get_future().get());
    }
    // Ends the run as the worker does, unless there is one.
    std::int32_t end(std::int32_t value) {
        context().windowedExitValue = value;
        PostMessageA(mainWindow(), WM_DESTROY, 0, 0);
        return awaitEnd();
    }
    std::int32_t awaitEnd() {
        mainThread.join();
        return exitValue;
    }
    // Progress arrives a little later than its caller goes on.
    bool barReaches(std::int32_t position) {
        return waitFor([&] { return desktop.barPosition() == position; });
    }
    bool barMoves() {
        const std::int32_t position = desktop.barPosition();
        return waitFor([&] { return desktop.barPosition() != position; }, 300ms);
    }
    // Runs `ask`, which waits for the user, and gives its result once `answer` has answered.
    template <class Ask, class Answer>
    auto answered(Ask ask, Answer answer) {
        auto result = std::async(std::launch::async, ask);
        answer(desktop.waitForQuestion());
        return result.get();
    }

    test::LauncherRun run;
    test::Desktop desktop;
    ArgumentVector arguments;
    WindowsLauncherUI ui{arguments};
    std::thread mainThread;
    std::int32_t exitValue = 0;
};

TEST_F(FrontEndTest, TheBarIsNeverFullAndWraps) {
    start();
    const struct {
        std::int32_t from;
        std::int32_t step;
        std::int32_t to;
    } cases[] = {{95, 5, 0}, {99, 5, 4}, {100, 3, 3}, {7, -2, 5}};
    for (const auto& row : cases) {
        ui.setProgress(row.from);
        EXPECT_TRUE(barReaches(row.from % 100)) << desktop.barPosition();
        ui.stepProgress(row.step);
        EXPECT_TRUE(barReaches(row.to)) << row.from << " + " << row.step;
    }
    ui.setProgress(99);
    EXPECT_TRUE(barReaches(99));
    ui.setProgress(100);
    EXPECT_TRUE(barReaches(0));
}

TEST_F(FrontEndTest, ShownAndHidden) {
    start();
    EXPECT_FALSE(desktop.anythingVisible());
    for (const std::int16_t atOnce : {std::int16_t{0}, std::int16_t{-1}}) {
        ui.show();
        EXPECT_TRUE(ui.isVisible());
        EXPECT_FALSE(IsWindowVisible(mainWindow()));
        ui.hide(atOnce);
        EXPECT_FALSE(desktop.anythingVisible());
        EXPECT_FALSE(barMoves());
    }
    EXPECT_EQ(test::Desktop::textOf(mainWindow()), "");
}

TEST_F(FrontEndTest, TheBarGoesRoundUntilTheDialogIsHidden) {
    start();
    ui.show();
    const auto begin = std::chrono::steady_clock::now();
    ui.hide(3);
    std::set<std::int32_t> positions;
    EXPECT_TRUE(waitFor([&] {
        positions.insert(desktop.barPosition());
        return !ui.isVisible();
    }));
    EXPECT_GT(std::chrono::steady_clock::now() - begin, 2500ms);
    // One round is 20 ticks, of which a busy machine may lose some.
    EXPECT_GE(positions.size(), 5u);
    for (const std::int32_t position : positions)
        EXPECT_EQ(position % 5, 0) << position;
    EXPECT_FALSE(barMoves());
    ui.show();
    EXPECT_TRUE(ui.isVisible());
}

TEST_F(FrontEndTest, StatusAndTitle) {
    start();
    EXPECT_EQ(text(ui.title()), "");
    EXPECT_EQ(desktop.status(), "");
    ui.setStatus("Größe — 大きさ");
    EXPECT_EQ(desktop.status(), "Größe — 大きさ");
    ui.setStatusDetail("Searching for %1", "C:\\jdk & more");
    EXPECT_EQ(desktop.status(), "Searching for %1 C:\\jdk & more");
    ui.setTitle("Мастер Corvane");
    EXPECT_EQ(test::Desktop::textOf(dialog()), "Мастер Corvane");
    EXPECT_EQ(text(ui.title()), "Мастер Corvane");
    ui.setTitle(String(600, 'x'));
    EXPECT_EQ(text(ui.title()), std::string(511, 'x'));
}

TEST_F(FrontEndTest, AMessageWaitsForItsAnswer) {
    start();
    ui.setTitle("The title");
    answered([this] { ui.showMessage("Two\nlines ü"); },
             [this](HWND box) {
                 EXPECT_EQ(test::Desktop::messageOf(box), "Two\nlines ü");
                 EXPECT_EQ(test::Desktop::textOf(box), "The title");
                 EXPECT_EQ(GetWindow(box, GW_OWNER), dialog());
                 // The main thread goes on meanwhile.
                 ui.setStatus("still served");
                 EXPECT_EQ(desktop.status(), "still served");
                 test::Desktop::answer(box);
             });
    EXPECT_EQ(desktop.question(), nullptr);
}

TEST_F(FrontEndTest, AClosedDialogOnlyAsksToCancel) {
    start();
    ui.show();
    for (const int key : {IDOK, IDCANCEL})
        SendMessageA(dialog(), WM_COMMAND, static_cast<WPARAM>(key), 0);
    EXPECT_FALSE(context().cancelRequested);
    SendMessageA(dialog(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(context().cancelRequested);
    EXPECT_TRUE(ui.isVisible());
}

TEST_F(FrontEndTest, AButtonNamedCancelWouldCancelAndIsDisabledByHide) {
    start();
    const auto id = static_cast<WPARAM>(DialogControl::cancel);
    const HWND button = CreateWindowExA(0, "BUTTON", "", WS_CHILD, 0, 0, 9, 9, dialog(),
                                        reinterpret_cast<HMENU>(id), nullptr, nullptr);
    ui.hide(0);
    EXPECT_FALSE(IsWindowEnabled(button));
    SendMessageA(dialog(), WM_COMMAND, id, reinterpret_cast<LPARAM>(button));
    EXPECT_TRUE(context().cancelRequested);
    DestroyWindow(button);
}

TEST_F(FrontEndTest, WithoutADialogOnlyProgressFails) {
    start();
    void* const kept = std::exchange(context().dialogWindow, nullptr);
    ui.setStatus("a");
    ui.setTitle("b");
    ui.hide(1);
    EXPECT_EQ(text(ui.title()), "");
    EXPECT_FALSE(ui.isVisible());
    const char* const message = "The progress bar has not been created yet";
    EXPECT_EQ(test::failureOf([this] { ui.stepProgress(1); }), message);
    EXPECT_EQ(test::failureOf([this] { ui.setProgress(1); }), message);
    context().dialogWindow = kept;
}

TEST_F(FrontEndTest, ADirectoryIsChosen) {
    start();
    const auto choose = [this] { return text(ui.chooseDirectory()); };
    EXPECT_EQ(answered(choose, [](HWND box) { test::Desktop::answer(box, IDCANCEL); }), "");
    std::string title;
    const auto accept = [&title](HWND box) {
        EnumChildWindows(
            box,
            [](HWND child, LPARAM found) {
                auto& texts = *reinterpret_cast<std::string*>(found);
                texts += test::Desktop::textOf(child) + "\n";
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&title));
        test::Desktop::answer(box, IDOK);
    };
    const std::string chosen = answered(choose, accept);
    EXPECT_NE(title.find("Choose the JVM Destination Directory"), std::string::npos) << title;
    EXPECT_NE(GetFileAttributesA(chosen.c_str()) & FILE_ATTRIBUTE_DIRECTORY, 0u) << chosen;
}

// On either family of Windows.
TEST_F(FrontEndTest, TheExitValueGoesThroughTheMessageLoop) {
    for (const bool win9xFamily : {false, true}) {
        context().win9xFamily = win9xFamily;
        for (const std::int32_t value : {0, -1, 3, 1000, INT32_MIN}) {
            start();
            EXPECT_EQ(end(value), value);
            EXPECT_FALSE(IsWindow(dialog()));
        }
    }
}

// A front end that fails in a way that no part of a run expects.
class FailingUI final : public LauncherUI {
  public:
    bool init(void*, std::int32_t) override { return true; }
    std::int32_t run() override { return 0; }
    void setStatus(const String&) override {}
    void setStatusDetail(const String&, const String&) override {}
    void stepProgress(std::int32_t) override {}
    void setProgress(std::int32_t) override { throw 1; }
    void show() override {}
    void hide(std::int16_t) override {}
    bool isVisible() override { return false; }
    void showMessage(const String&) override {}
    String title() override { return {}; }
    void setTitle(const String&) override {}
    String chooseDirectory() override { return {}; }
};

TEST_F(FrontEndTest, AWorkerWithoutARunEndsTheProgramToo) {
    FailingUI failing;
    const struct {
        const char* what;
        LauncherUI* ui;
        bool hasArguments;
        std::int32_t exitValue;
    } cases[] = {{"no arguments", &ui, false, 0},
                 {"no front end", nullptr, true, 0},
                 {"an exception", &failing, true, -1}};
    for (const auto& row : cases) {
        SCOPED_TRACE(row.what);
        if (row.hasArguments && arguments.count() == 0)
            arguments.build();
        context().ui = row.ui;
        context().workerPending = true;
        context().windowedExitValue = 0;
        start();
        EXPECT_EQ(awaitEnd(), row.exitValue);
        EXPECT_FALSE(context().workerPending);
    }
}

TEST_F(FrontEndTest, TheEndOfTheSessionCleansUp) {
    start();
    for (const bool ending : {false, true}) {
        context().tempDirs.add(run.scratch.path("temp\\d"));
        run.scratch.write("temp\\d\\e\\file", "x");
        EXPECT_EQ(SendMessageA(mainWindow(), WM_ENDSESSION, ending, 0), 0);
        EXPECT_FALSE(run.scratch.exists("temp\\d"));
        EXPECT_EQ(context().sessionEnding, ending);
    }
}

// The cleanup waits for the worker's file to be closed, so the worker must not wait for the
// cleanup.
TEST_F(FrontEndTest, TheCleanupDoesNotHoldUpTheCopyingOfAFile) {
    start();
    context().tempDirs.add(run.scratch.path("temp\\d"));
    run.scratch.write("temp\\d\\other", "x");
    FileGuard file(CreateFileA(run.scratch.write("temp\\d\\file", "x").cstr(), GENERIC_READ, 0,
                               nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(file);
    SendNotifyMessageA(mainWindow(), WM_ENDSESSION, TRUE, 0);
    EXPECT_TRUE(waitFor([this] { return !run.scratch.exists("temp\\d\\other"); }));
    ui.stepProgress(1);
    ui.setProgress(50);
    EXPECT_TRUE(run.scratch.exists("temp\\d\\file")) << "the cleanup was over too early";
    file.reset();
    EXPECT_TRUE(waitFor([this] { return !run.scratch.exists("temp\\d"); }));
    EXPECT_TRUE(barReaches(50));
}

}  // namespace
}  // namespace corvane
