// Pictures of pixels: reading, scaling and writing of PNG.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane::pack {

struct Picture {
    int width = 0;
    int height = 0;
    std::string pixels;  // red, green, blue, opacity; row by row from the top
};

bool isPng(std::string_view bytes);

// Nothing if it isn't whole, or no PNG at all, or wider or higher than 4096 pixels.
std::optional<Picture> readPng(std::string_view bytes);

// A square picture of another size.
Picture scaled(const Picture& picture, int size);

std::string writePng(const Picture& picture);

}  // namespace corvane::pack
