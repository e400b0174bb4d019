// The one file that holds the library of pictures.
#include "packer/face/Picture.h"

#include <cstdlib>
#include <limits>

#include "packer/base/Errors.h"

namespace {

// A damaged picture may ask for a thousand times what it holds.
constexpr std::size_t mostMemory = std::size_t{160} << 20;

void* limitedRealloc(void* block, std::size_t size) {
    return size > mostMemory ? nullptr : std::realloc(block, size);
}

}  // namespace

// What these macros become counts as ours, not as the library's.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wold-style-cast"
#define STBI_MALLOC(size) limitedRealloc(nullptr, size)
#define STBI_REALLOC(block, size) limitedRealloc(block, size)
#define STBI_FREE(block) std::free(block)
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#define STBI_NO_STDIO
#define STBI_NO_LINEAR
#define STBI_MAX_DIMENSIONS 4096
#include <stb_image.h>
#define STB_IMAGE_RESIZE_IMPLEMENTATION
#define STB_IMAGE_RESIZE_STATIC
#include <stb_image_resize.h>
#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb_image_write.h>
#pragma GCC diagnostic pop

namespace corvane::pack {

namespace {

constexpr int channels = 4;

Picture blank(int width, int height) {
    return {width, height, std::string(static_cast<std::size_t>(width * height * channels), '\0')};
}

stbi_uc* bytesOf(std::string& text) {
    return reinterpret_cast<stbi_uc*>(text.data());
}

const stbi_uc* bytesOf(std::string_view text) {
    return reinterpret_cast<const stbi_uc*>(text.data());
}

void append(void* text, void* bytes, int size) {
    static_cast<std::string*>(text)->append(static_cast<const char*>(bytes),
                                            static_cast<std::size_t>(size));
}

}  // namespace

bool isPng(std::string_view bytes) {
    return bytes.starts_with("\x89PNG\r\n\x1A\n");
}

std::optional<Picture> readPng(std::string_view bytes) {
    if (!isPng(bytes) || bytes.size() > std::numeric_limits<int>::max())
        return std::nullopt;
    Picture picture;
    int ignored = 0;
    stbi_uc* const pixels =
        stbi_load_from_memory(bytesOf(bytes), static_cast<int>(bytes.size()), &picture.width,
                              &picture.height, &ignored, channels);
    if (pixels == nullptr)
        return std::nullopt;
    picture.pixels.assign(reinterpret_cast<const char*>(pixels),
                          static_cast<std::size_t>(picture.width * picture.height * channels));
    stbi_image_free(pixels);
    return picture;
}

Picture scaled(const Picture& picture, int size) {
    constexpr int opacity = channels - 1;
    Picture result = blank(size, size);
    if (!stbir_resize_uint8_srgb(bytesOf(std::string_view(picture.pixels)), picture.width,
                                 picture.height, 0, bytesOf(result.pixels), size, size, 0, channels,
                                 opacity, 0))
        throw PackError("there is too little memory to scale the picture");
    return result;
}

std::string writePng(const Picture& picture) {
    std::string bytes;
    if (!stbi_write_png_to_func(append, &bytes, picture.width, picture.height, channels,
                                picture.pixels.data(), 0))
        throw PackError("there is too little memory to write the picture");
    return bytes;
}

}  // namespace corvane::pack
