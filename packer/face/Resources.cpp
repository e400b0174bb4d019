// Reading and writing of the resource tree.
#include "packer/face/Resources.h"

#include "packer/face/Bytes.h"

namespace corvane::pack {

namespace {

constexpr std::uint32_t headerSize = 16;  // of a directory
constexpr std::uint32_t entrySize = 8;    // of a directory's entry
constexpr std::uint32_t leafSize = 16;
constexpr std::uint32_t highBit = 0x8000'0000;  // a name is a text; a child is a directory
constexpr std::uint32_t alignment = 4;

// Far more than any launcher has; a tree that leads into itself, or to the same bytes again and
// again, would have no end.
constexpr std::size_t mostEntries = 20'000;
constexpr std::size_t mostBytes = std::size_t{64} << 20;

[[noreturn]] void failDamaged() {
    throw PackError("the program's resources are damaged");
}

class ResourceReader {
  public:
    ResourceReader(std::string_view section, std::uint32_t address)
        : section_(section), address_(address) {}

    Resources read() {
        forEachChild(0, true, [&](const ResourceName& type, std::uint32_t names) {
            forEachChild(names, true, [&](const ResourceName& name, std::uint32_t languages) {
                forEachChild(languages, false, [&](const ResourceName& key, std::uint32_t leaf) {
                    addLeaf(type, name, key, leaf);
                });
            });
        });
        return std::move(resources_);
    }

  private:
    // Hands on name and position of each child of a directory.
    template <class Take>
    void forEachChild(std::uint32_t directory, bool childIsDirectory, const Take& take) {
        const std::uint32_t count = number(directory + 12, 2) + number(directory + 14, 2);
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::uint32_t entry = directory + headerSize + i * entrySize;
            const std::uint32_t child = number(entry + 4, 4);
            if (++entries_ > mostEntries || (child >= highBit) != childIsDirectory)
                failDamaged();
            take(nameOf(number(entry, 4)), child & ~highBit);
        }
    }

    ResourceName nameOf(std::uint32_t value) const {
        if (value <= 0xFFFF)
            return {static_cast<std::uint16_t>(value)};
        if (value < highBit)
            failDamaged();
        std::uint32_t position = value & ~highBit;
        std::u16string name(number(position, 2), u'\0');
        for (char16_t& unit : name)
            unit = static_cast<char16_t>(number(position += 2, 2));
        return ResourceName(std::move(name));
    }

    void addLeaf(const ResourceName& type, const ResourceName& name, const ResourceName& language,
                 std::uint32_t leaf) {
        const std::uint32_t start = number(leaf, 4);
        const std::uint32_t size = number(leaf + 4, 4);
        bytes_ += size;
        if (start < address_ || bytes_ > mostBytes || !language.isNumber)
            failDamaged();
        const std::string_view data = partOf(section_, start - address_, size);
        if (!resources_.emplace(ResourceKey{type, name, language.number}, data).second)
            failDamaged();
    }

    std::uint32_t number(std::uint32_t at, std::size_t size) const {
        return numberAt(section_, at, size);
    }

    std::string_view section_;
    std::uint32_t address_;
    std::size_t entries_ = 0;
    std::size_t bytes_ = 0;
    Resources resources_;
};

using Languages = std::map<ResourceName, const std::string*>;
using Names = std::map<ResourceName, Languages>;
using Types = std::map<ResourceName, Names>;

Types treeOf(const Resources& resources) {
    Types types;
    for (const auto& [key, data] : resources)
        types[key.type][key.name][key.language] = &data;
    return types;
}

// Directories, leaves, names and data, in this order.
class ResourceWriter {
  public:
    explicit ResourceWriter(std::uint32_t address) : address_(address) {}

    std::string write(const Types& types) {
        measure(types);
        bytes_.assign(namesEnd_, '\0');
        fillUp(bytes_, alignment);
        placeDirectory(types);
        return std::move(bytes_);
    }

  private:
    // Where each of the parts begins.
    void measure(const Types& types) {
        std::uint32_t leaves = 0;
        std::uint32_t texts = 0;
        const auto count = [&](const auto& directory) {
            nextLeaf_ += headerSize + entrySize * static_cast<std::uint32_t>(directory.size());
            for (const auto& [name, child] : directory)
                texts += name.isNumber ? 0 : textSize(name);
        };
        count(types);
        for (const auto& [type, names] : types) {
            count(names);
            for (const auto& [name, languages] : names) {
                count(languages);
                leaves += static_cast<std::uint32_t>(languages.size());
            }
        }
        nextName_ = nextLeaf_ + leaves * leafSize;
        namesEnd_ = nextName_ + texts;
    }

    static std::uint32_t textSize(const ResourceName& name) {
        return 2 + 2 * static_cast<std::uint32_t>(name.text.size());
    }

    template <class Directory>
    std::uint32_t placeDirectory(const Directory& directory) {
        const std::uint32_t position = nextDirectory_;
        nextDirectory_ += headerSize + entrySize * static_cast<std::uint32_t>(directory.size());
        std::uint32_t entry = position + headerSize;
        std::uint32_t numbers = 0;
        for (const auto& [name, child] : directory) {
            numbers += name.isNumber ? 1 : 0;
            set(entry, name.isNumber ? name.number : placeName(name), 4);
            set(entry + 4, placeChild(child), 4);
            entry += entrySize;
        }
        set(position + 12, static_cast<std::uint32_t>(directory.size()) - numbers, 2);
        set(position + 14, numbers, 2);
        return position;
    }

    template <class Directory>
    std::uint32_t placeChild(const Directory& directory) {
        return placeDirectory(directory) | highBit;
    }

    std::uint32_t placeChild(const std::string* data) {
        const std::uint32_t position = nextLeaf_;
        nextLeaf_ += leafSize;
        set(position, address_ + placeData(*data), 4);
        set(position + 4, static_cast<std::uint32_t>(data->size()), 4);
        return position;
    }

    std::uint32_t placeName(const ResourceName& name) {
        const std::uint32_t position = nextName_;
        set(nextName_, static_cast<std::uint32_t>(name.text.size()), 2);
        for (const char16_t unit : name.text)
            set(nextName_ += 2, unit, 2);
        nextName_ += 2;
        return position | highBit;
    }

    std::uint32_t placeData(const std::string& data) {
        const auto [place, isNew] =
            placed_.emplace(data, static_cast<std::uint32_t>(bytes_.size()));
        if (isNew) {
            bytes_ += data;
            fillUp(bytes_, alignment);
        }
        return place->second;
    }

    void set(std::uint32_t at, std::uint32_t value, std::size_t size) {
        setNumber(bytes_, at, value, size);
    }

    std::uint32_t address_;
    std::uint32_t nextDirectory_ = 0;
    std::uint32_t nextLeaf_ = 0;
    std::uint32_t nextName_ = 0;
    std::uint32_t namesEnd_ = 0;
    std::string bytes_;
    std::map<std::string_view, std::uint32_t> placed_;
};

}  // namespace

Resources readResources(std::string_view section, std::uint32_t address) {
    return ResourceReader(section, address).read();
}

std::string writeResources(const Resources& resources, std::uint32_t address) {
    return ResourceWriter(address).write(treeOf(resources));
}

}  // namespace corvane::pack
