// The icon that an author gives: an icon file, or a large picture from which all sizes are made.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "packer/face/Resources.h"

namespace corvane::pack {

struct IconImage {
    std::uint8_t width = 0;  // 0 is 256
    std::uint8_t height = 0;
    std::uint8_t colours = 0;  // of a palette; 0 is none, or 256 of them
    std::uint16_t bits = 0;    // per pixel
    std::string data;          // a PNG, or a bitmap with its mask
};

using Icon = std::vector<IconImage>;

// Reads the bytes of an icon file or of a PNG, which must be square and of 256 pixels at least.
// Raises `PackError` when they are damaged or something else.
Icon readIcon(std::string_view bytes);

// Puts the icon into the place of the first group, which is the one that Windows shows, and of the
// group `also`. Images that no group refers to any more go.
void setIcon(Resources& resources, const Icon& icon, std::uint16_t also);

}  // namespace corvane::pack
