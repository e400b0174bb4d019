// Reading of icons, making them from a picture, and their place among the resources.
#include "packer/face/Icon.h"

#include <algorithm>
#include <set>

#include "packer/face/Bytes.h"
#include "packer/face/Picture.h"

namespace corvane::pack {

namespace {

constexpr int sizes[] = {16, 20, 24, 32, 40, 48, 64, 256};
constexpr int largest = 256;
constexpr std::uint16_t deepBits = 32;

// Of an icon file and of a group. They differ in the last field of an entry: the position of the
// image's bytes, or the name of its resource.
constexpr std::size_t groupHeader = 6;
constexpr std::size_t fileEntry = 16;
constexpr std::size_t groupEntry = 14;
constexpr std::size_t groupEntryName = 12;
constexpr std::uint32_t iconType = 1;
constexpr std::uint32_t mostImages = 64;

constexpr std::uint32_t bitmapHeader = 40;

[[noreturn]] void failDamaged(const std::string& why) {
    throw PackError("the icon is damaged: " + why);
}

int sideOf(std::uint8_t side) {
    return side == 0 ? largest : side;
}

// A row of a bitmap fills words of 32 bits.
std::size_t rowSize(int width, std::uint32_t bits) {
    return (static_cast<std::size_t>(width) * bits + 31) / 32 * 4;
}

void readPngImage(IconImage& image) {
    const std::optional<Picture> picture = readPng(image.data);
    if (!picture || picture->width != sideOf(image.width) ||
        picture->height != sideOf(image.height))
        failDamaged("a picture in it is cut short, or of another size than it says");
    image.bits = deepBits;
}

void readBitmap(IconImage& image) {
    const auto field = [&](std::size_t at, std::size_t size) {
        return numberAt(image.data, at, size);
    };
    const int width = sideOf(image.width);
    const int height = sideOf(image.height);
    const std::uint32_t bits = field(14, 2);
    const bool usual =
        bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
    if (field(0, 4) != bitmapHeader || field(4, 4) != static_cast<std::uint32_t>(width) ||
        field(8, 4) != static_cast<std::uint32_t>(2 * height) || field(12, 2) != 1 || !usual ||
        field(16, 4) != 0)
        failDamaged("a bitmap in it is of an unusual kind, or of another size than it says");
    const std::uint32_t most = bits > 8 ? 0 : 1U << bits;
    const std::uint32_t palette = field(32, 4) == 0 ? most : field(32, 4);
    const std::size_t rows =
        (rowSize(width, bits) + rowSize(width, 1)) * static_cast<std::size_t>(height);
    if (palette > 256 || image.data.size() < bitmapHeader + 4 * palette + rows)
        failDamaged("a bitmap in it is cut short");
    image.bits = static_cast<std::uint16_t>(bits);
}

Icon readIconFile(std::string_view bytes) {
    const std::uint32_t count = numberAt(bytes, 4, 2);
    if (count == 0 || count > mostImages)
        failDamaged("it names " + std::to_string(count) + " images");
    Icon icon;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::size_t entry = groupHeader + i * fileEntry;
        const auto field = [&](std::size_t at, std::size_t size = 1) {
            return numberAt(bytes, entry + at, size);
        };
        IconImage image;
        image.width = static_cast<std::uint8_t>(field(0));
        image.height = static_cast<std::uint8_t>(field(1));
        image.colours = static_cast<std::uint8_t>(field(2));
        image.data = partOf(bytes, field(12, 4), field(8, 4));
        isPng(image.data) ? readPngImage(image) : readBitmap(image);
        icon.push_back(std::move(image));
    }
    return icon;
}

// Blue comes first, the bottom row too. The mask, for systems that know no opacity, hides what
// can't be seen.
std::string bitmapOf(const Picture& picture) {
    std::string bytes;
    for (const std::uint32_t value : {bitmapHeader, static_cast<std::uint32_t>(picture.width),
                                      static_cast<std::uint32_t>(2 * picture.height),
                                      1U | std::uint32_t{deepBits} << 16, 0U, 0U, 0U, 0U, 0U, 0U})
        appendNumber(bytes, value, 4);
    const auto width = static_cast<std::size_t>(picture.width);
    std::string mask;
    for (auto row = static_cast<std::size_t>(picture.height); row-- > 0;) {
        std::string hidden(rowSize(picture.width, 1), '\0');
        for (std::size_t column = 0; column < width; ++column) {
            const char* const pixel = &picture.pixels[4 * (row * width + column)];
            bytes.append({pixel[2], pixel[1], pixel[0], pixel[3]});
            if (pixel[3] == 0)
                hidden[column / 8] = static_cast<char>(hidden[column / 8] | 0x80 >> column % 8);
        }
        mask += hidden;
    }
    return bytes + mask;
}

Icon iconFromPicture(const Picture& picture) {
    if (picture.width != picture.height || picture.width < largest)
        throw PackError(
            "a picture for an icon must be square and have 256 pixels or more a side; "
            "this one has " +
            std::to_string(picture.width) + " by " + std::to_string(picture.height));
    Icon icon;
    for (const int size : sizes) {
        const Picture image = scaled(picture, size);
        const auto side = static_cast<std::uint8_t>(size % largest);
        icon.push_back(
            {side, side, 0, deepBits, size == largest ? writePng(image) : bitmapOf(image)});
    }
    return icon;
}

bool isOf(const Resources::value_type& resource, std::uint16_t type) {
    return resource.first.type == ResourceName(type);
}

// The numbers of the images that groups refer to.
std::set<std::size_t> usedImages(const Resources& resources) {
    std::set<std::size_t> used;
    for (const auto& resource : resources) {
        if (!isOf(resource, resourcetype::iconGroup))
            continue;
        const std::uint32_t count = numberAt(resource.second, 4, 2);
        for (std::uint32_t i = 0; i < count; ++i)
            used.insert(
                numberAt(resource.second, groupHeader + i * groupEntry + groupEntryName, 2));
    }
    return used;
}

// Puts the images into the place of those that no group refers to, and gives the group that refers
// to them.
std::string replaceImages(Resources& resources, const Icon& icon) {
    const std::set<std::size_t> used = usedImages(resources);
    std::erase_if(resources, [&](const auto& resource) {
        return isOf(resource, resourcetype::icon) && !used.contains(resource.first.name.number);
    });
    std::size_t next = used.empty() ? 1 : *used.rbegin() + 1;
    if (next + icon.size() > 0xFFFF)
        throw PackError("the program has no numbers left for the images of an icon");
    std::string group;
    appendNumber(group, iconType << 16, 4);
    appendNumber(group, static_cast<std::uint32_t>(icon.size()), 2);
    for (const auto& [width, height, colours, bits, data] : icon) {
        group.append({static_cast<char>(width), static_cast<char>(height),
                      static_cast<char>(colours), '\0'});
        appendNumber(group, 1, 2);
        appendNumber(group, bits, 2);
        appendNumber(group, static_cast<std::uint32_t>(data.size()), 4);
        appendNumber(group, static_cast<std::uint32_t>(next), 2);
        const auto number = static_cast<std::uint16_t>(next++);
        resources.insert_or_assign({resourcetype::icon, number, 0}, data);
    }
    return group;
}

}  // namespace

Icon readIcon(std::string_view bytes) {
    if (isPng(bytes)) {
        const std::optional<Picture> picture = readPng(bytes);
        if (!picture)
            throw PackError("the picture is damaged, or has more than 4096 pixels a side");
        return iconFromPicture(*picture);
    }
    if (bytes.size() < groupHeader || numberAt(bytes, 0, 4) != iconType << 16)
        throw PackError("this is neither an icon file (.ico) nor a PNG");
    return readIconFile(bytes);
}

void setIcon(Resources& resources, const Icon& icon, std::uint16_t also) {
    const auto first = std::find_if(resources.begin(), resources.end(), [](const auto& resource) {
        return isOf(resource, resourcetype::iconGroup);
    });
    const ResourceName front = first == resources.end() ? ResourceName(1) : first->first.name;
    std::erase_if(resources, [&](const auto& resource) {
        const ResourceName& name = resource.first.name;
        return isOf(resource, resourcetype::iconGroup) && (name == front || name == also);
    });
    const std::string group = replaceImages(resources, icon);
    for (const ResourceName& name : {front, ResourceName(also)})
        resources.insert_or_assign({resourcetype::iconGroup, name, 0}, group);
}

}  // namespace corvane::pack
