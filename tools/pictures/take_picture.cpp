// Brings a launcher's windows into a state, says where on the screen they are (as WxH+X+Y), and
// leaves them there until its input ends, so that somebody can take a picture.
// Usage: take_picture tall|short|failure
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "windowed/Launched.h"

namespace corvane::test {
namespace {

// What a picture shows.
struct Scene {
    const char* name;
    std::uint8_t kind;
    std::string orders;  // for the child that the scene ends with; empty: it goes on running
};

const Scene scenes[] = {
    {"tall", 0, ""},
    {"short", 1, ""},
    {"failure", 0,
     "err Error: Could not find or load main class Setup\nerr Caused by: "
     "java.lang.ClassNotFoundException: Setup\nexit 1"},
};

// Whether a window has been drawn on the screen, which is black without it. Looks near a corner,
// where no window has text.
bool isDrawn(const RECT& area) {
    constexpr int margin = 8;
    const HDC screen = GetDC(nullptr);
    const COLORREF colour = GetPixel(screen, area.right - margin, area.bottom - margin);
    ReleaseDC(nullptr, screen);
    return colour != RGB(0, 0, 0);
}

// The window that the scene is about, once it looks as it should.
HWND subjectOf(const Scene& scene, Launched& launcher) {
    const Desktop& desktop = launcher.desktop();
    if (!launcher.awaitChild(1))
        return nullptr;
    if (!scene.orders.empty()) {
        launcher.release(1, scene.orders);
        return desktop.waitForQuestion();
    }
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
    Launched launcher({.script = "INITIALIZE_UI\nILAUNCH 100 60\n", .kind = scene->kind});
    const HWND subject = subjectOf(*scene, launcher);
    RECT area{};
    if (!GetWindowRect(subject, &area) || !waitFor([&] { return isDrawn(area); })) {
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
        std::fprintf(stderr, "usage: take_picture tall|short|failure\n");
        return 2;
    }
    return corvane::test::showScene(argv[1]);
}
