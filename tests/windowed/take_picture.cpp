// Brings a launcher's windows into a state and takes a picture of them, a PPM file.
// Usage: take_picture tall|short|search|failure FILE
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <vector>

#include "windowed/Launched.h"

namespace corvane::test {
namespace {

// What a picture shows.
struct Scene {
    const char* name;
    LauncherPlan plan;
    std::string orders;  // for the child that the scene ends with; empty: it goes on running
    int lastChild;
};

const std::string launchScene = "INITIALIZE_UI\nILAUNCH 100 60\n";

const Scene scenes[] = {
    {"tall", {.script = launchScene, .kind = 0}, "", 1},
    {"short", {.script = launchScene, .kind = 1}, "", 1},
    {"search", {.script = "FIND_JVM 1 0\n", .kind = 0, .namesTheHome = true}, "", 1},
    {"failure",
     {.script = launchScene, .kind = 0},
     "err Error: Could not find or load main class Setup\nerr Caused by: "
     "java.lang.ClassNotFoundException: Setup\nexit 1",
     1},
};

// The window that the scene is about, once it looks as it should.
HWND subjectOf(const Scene& scene, Launched& launcher) {
    const Desktop& desktop = launcher.desktop();
    if (!launcher.awaitChild(scene.lastChild))
        return nullptr;
    if (!scene.orders.empty()) {
        launcher.release(scene.lastChild, scene.orders);
        return desktop.waitForQuestion();
    }
    if (scene.plan.script == launchScene)
        waitFor([&] { return desktop.barPosition() >= 60; });
    return desktop.progressDialog();
}

struct Picture {
    int width;
    int height;
    std::vector<unsigned char> pixels;  // rows from the top: blue, green, red, unused
};

Picture copyScreen(const RECT& area) {
    Picture picture{area.right - area.left, area.bottom - area.top, {}};
    picture.pixels.resize(static_cast<std::size_t>(picture.width * picture.height) * 4);
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, picture.width, picture.height);
    const HGDIOBJ former = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, picture.width, picture.height, screen, area.left, area.top, SRCCOPY);
    SelectObject(memory, former);
    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof format.bmiHeader;
    format.bmiHeader.biWidth = picture.width;
    format.bmiHeader.biHeight = -picture.height;
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    GetDIBits(memory, bitmap, 0, static_cast<UINT>(picture.height), picture.pixels.data(), &format,
              DIB_RGB_COLORS);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return picture;
}

void writePicture(const Picture& picture, const char* path) {
    std::ofstream stream(path, std::ios::binary);
    stream << "P6 " << picture.width << ' ' << picture.height << " 255\n";
    for (std::size_t i = 0; i < picture.pixels.size(); i += 4) {
        for (const unsigned char* colour = &picture.pixels[i + 3]; colour-- != &picture.pixels[i];)
            stream.put(static_cast<char>(*colour));
    }
}

int takePicture(const char* name, const char* path) {
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
    if (subject == nullptr || !GetWindowRect(subject, &area)) {
        std::fprintf(stderr, "the scene %s doesn't come about\n", name);
        return 1;
    }
    writePicture(copyScreen(area), path);
    launcher.release(scene->lastChild);
    return 0;
}

}  // namespace
}  // namespace corvane::test

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: take_picture tall|short|search|failure FILE\n");
        return 2;
    }
    return corvane::test::takePicture(argv[1], argv[2]);
}
