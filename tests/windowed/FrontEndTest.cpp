// `WindowsLauncherUI` by itself: the test's own thread plays the worker.
#include <gtest/gtest.h>

#include <future>
#include <set>
#include <thread>

#include "frontends/windowed/WindowsLauncherUI.h"
#include "support/Payload.h"
#include "windowed/Desktop.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using test::Desktop;
using test::text;
using test::waitFor;

// A front end whose main thread is a thread of its own, without a run.
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
    // Ends the run as the worker does.
    std::int32_t end(std::int32_t value) {
        context().windowedExitValue = value;
        PostMessageA(mainWindow(), WM_DESTROY, 0, 0);
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
    Desktop desktop;
    ArgumentVector arguments;
    WindowsLauncherUI ui{arguments};
    std::thread mainThread;
    std::int32_t exitValue = 0;
};

TEST_F(FrontEndTest, TheBarIsNeverFullAndWraps) {
    start();
    ui.setProgress(99);
    EXPECT_TRUE(barReaches(99));
    ui.stepProgress(5);
    EXPECT_TRUE(barReaches(4));
    ui.setProgress(100);
    EXPECT_TRUE(barReaches(0));
}

TEST_F(FrontEndTest, ShownAndHiddenAtOnceOrLater) {
    start();
    EXPECT_FALSE(desktop.anythingVisible());
    for (const std::int16_t atOnce : {std::int16_t{0}, std::int16_t{-1}}) {
        ui.show();
        EXPECT_TRUE(ui.isVisible());
        ui.hide(atOnce);
        EXPECT_FALSE(desktop.anythingVisible());
        EXPECT_FALSE(barMoves());
    }
    ui.show();
    EXPECT_TRUE(ui.isVisible());
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
}

TEST_F(FrontEndTest, StatusAndTitle) {
    start();
    ui.setStatus("Größe — 大きさ");
    EXPECT_EQ(desktop.status(), "Größe — 大きさ");
    ui.setStatusDetail("Searching for %1", "C:\\jdk & more");
    EXPECT_EQ(desktop.status(), "Searching for %1 C:\\jdk & more");
    EXPECT_EQ(text(ui.title()), "");
    ui.setTitle("Мастер Corvane");
    EXPECT_EQ(Desktop::textOf(dialog()), "Мастер Corvane");
    ui.setTitle(String(600, 'x'));
    EXPECT_EQ(text(ui.title()), std::string(511, 'x'));
}

TEST_F(FrontEndTest, TheMainThreadServesWhileTheUserIsAsked) {
    start();
    answered([this] { ui.showMessage("Two\nlines ü"); },
             [this](HWND box) {
                 EXPECT_EQ(Desktop::messageOf(box), "Two\nlines ü");
                 ui.setStatus("still served");
                 EXPECT_EQ(desktop.status(), "still served");
                 Desktop::answer(box);
             });
    EXPECT_EQ(desktop.question(), nullptr);
    answered([this] { ui.showLink("Ask", "C:\\calc.exe"); },
             [](HWND box) {
                 EXPECT_EQ(Desktop::messageOf(box), "Ask\n\nC:\\calc.exe") << "text alone";
                 Desktop::answer(box);
             });
}

TEST_F(FrontEndTest, ARequestToCloseTheProgramCancels) {
    start();
    SendMessageA(mainWindow(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(context().cancelRequested);
    EXPECT_TRUE(IsWindow(mainWindow()));
}

TEST_F(FrontEndTest, ADirectoryIsChosen) {
    start();
    for (const int button : {IDCANCEL, IDOK}) {
        const std::string chosen = answered([this] { return text(ui.chooseDirectory()); },
                                            [&](HWND box) {
                                                EXPECT_EQ(GetWindow(box, GW_OWNER), dialog());
                                                Desktop::answer(box, button);
                                            });
        EXPECT_EQ(std::filesystem::is_directory(chosen), button == IDOK) << chosen;
    }
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

// When this program alone is to close, the cleanup waits for the worker's file to be closed, so the
// worker must not wait for the cleanup.
TEST_F(FrontEndTest, TheCleanupDoesNotHoldUpTheCopyingOfAFile) {
    start();
    context().tempDirs.add(run.scratch.path("temp\\d"));
    run.scratch.write("temp\\d\\other", "x");
    FileGuard file(CreateFileA(run.scratch.write("temp\\d\\file", "x").cstr(), GENERIC_READ, 0,
                               nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(file);
    SendNotifyMessageA(mainWindow(), WM_ENDSESSION, TRUE, ENDSESSION_CLOSEAPP);
    EXPECT_TRUE(waitFor([this] { return !run.scratch.exists("temp\\d\\other"); }));
    ui.stepProgress(1);
    ui.setProgress(50);
    EXPECT_TRUE(run.scratch.exists("temp\\d\\file")) << "the cleanup was over too early";
    file.reset();
    EXPECT_TRUE(waitFor([this] { return !run.scratch.exists("temp\\d"); }));
    EXPECT_FALSE(context().sessionEnding);
    EXPECT_TRUE(barReaches(50));
}

TEST_F(FrontEndTest, AWorkerThatCannotRunEndsTheProgramToo) {
    test::RecordingUI failing;
    failing.onProgress = [] { throw 1; };
    arguments.build();
    const std::pair<LauncherUI*, std::int32_t> cases[] = {{nullptr, 0}, {&failing, -1}};
    for (const auto& [frontEnd, expected] : cases) {
        context().ui = frontEnd;
        context().workerPending = true;
        start();
        mainThread.join();
        EXPECT_EQ(exitValue, expected);
    }
}

}  // namespace
}  // namespace corvane
