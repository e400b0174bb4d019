// Brings a launcher's windows into a state, says where on the screen they are (as WxH+X+Y), and
// leaves them there until its input ends, so that somebody can take a picture.
// Usage: take_picture tall|short|failure|advice
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

#include "windowed/Launched.h"

namespace corvane::test {
namespace {

// What a picture shows.
struct Scene {
    const char* name;
    LauncherPlan plan;
    std::vector<std::string> orders;  // for the children; without any the first goes on running
};

const std::string launch = "INITIALIZE_UI\nILAUNCH 100 60\n";

const Scene scenes[] = {
    {"tall", {.script = launch}, {}},
    {"short", {.script = launch, .kind = 1}, {}},
    {"failure",
     {.script = launch},
     {"err Error: Could not find or load main class Setup\nerr Caused by: "
      "java.lang.ClassNotFoundException: Setup\nexit 1"}},
    {"advice",
     {.script = "INITIALIZE_UI\nFIND_JVM 1 0\nINSTALL_JVM 1\n",
      .message = "MESSAGE: Hello needs Java 21.\nDETAILS: 1\nLINK: https://dev.java/download/\n"},
     {"out 1739021872\nout 1.8.0_392", "exit 1"}},
};

COLORREF colourAt(LONG x, LONG y) {
    const HDC screen = GetDC(nullptr);
    const COLORREF colour = GetPixel(screen, x, y);
    ReleaseDC(nullptr, screen);
    return colour;
}

// Whether a window has been drawn on the screen, which is black without it. Looks near a corner,
// where no window has text, and at the edge of its button, which comes last.
bool isDrawn(HWND window, const RECT& area) {
    constexpr int margin = 8;
    if (colourAt(area.right - margin, area.bottom - margin) == RGB(0, 0, 0))
        return false;
    RECT button{};
    if (!GetWindowRect(FindWindowExA(window, nullptr, "Button", nullptr), &button))
        return true;
    const LONG middle = (button.top + button.bottom) / 2;
    return colourAt(button.left + 1, middle) != colourAt(button.left - 2, middle);
}

// The window that the scene is about, once it looks as it should.
HWND subjectOf(const Scene& scene, Launched& launcher) {
    const Desktop& desktop = launcher.desktop();
    int turn = 0;
    for (const std::string& orders : scene.orders) {
        if (!launcher.awaitChild(++turn))
            return nullptr;
        launcher.release(turn, orders);
    }
    if (turn > 0)
        return desktop.waitForQuestion();
    if (!launcher.awaitChild(1))
        return nullptr;
    waitFor([&] { return desktop.barPosition() >= 60; });
    return desktop.progressDialog();
}

int showScene(const char* name) {
    const auto* const scene =
        std::find_if(std::begin(scenes), std::end(scenes),
                     [&](const Scene& s) { return std::strcmp(s.name, name) == 0; });
    if (scene == std::end(scenes)) {
        std::fprintf(stderr, "unknown scene: %s\n", name);
        return 2;
    }
    Launched launcher(scene->plan);
    const HWND subject = subjectOf(*scene, launcher);
    RECT area{};
    if (!GetWindowRect(subject, &area) || !waitFor([&] { return isDrawn(subject, area); })) {
        std::fprintf(stderr, "the scene %s doesn't come about\n", name);
        return 1;
    }
    std::printf("%ldx%ld+%ld+%ld\n", area.right - area.left, area.bottom - area.top, area.left,
                area.top);
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}

}  // namespace
}  // namespace corvane::test

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: take_picture tall|short|failure|advice\n");
        return 2;
    }
    return corvane::test::showScene(argv[1]);
}
