// What ships with the tool.
#include "packer/project/Shipped.h"

#include <algorithm>

#include "packer/project/EmbeddedFiles.h"

namespace corvane::pack {

namespace {

// Where the embedded files of a type stand. What holds for all systems stands there for each.
struct Shelf {
    FileType type;
    System system;
    std::string_view folder;
    std::string_view extension;
};

constexpr Shelf shelves[] = {
    {FileType::jvmFile, System::windows, "windows/", ".jvm"},
    {FileType::jvmFile, System::host, "linux/", ".jvm"},
    {FileType::instructions, System::windows, "shipped/", ".script"},
    {FileType::instructions, System::host, "shipped/", ".script"},
    {FileType::jvmMessage, System::windows, "shipped/", ".msg"},
    {FileType::jvmMessage, System::host, "shipped/", ".msg"},
};

constexpr std::string_view verifyClass = "java/verify.jar";

bool standsOn(const Shelf& shelf, const EmbeddedFile& file) {
    return file.name.starts_with(shelf.folder) && file.name.ends_with(shelf.extension);
}

std::string nameOf(const EmbeddedFile& file) {
    return std::string(file.name.substr(file.name.find('/') + 1));
}

std::string wordOf(const Shelf& shelf, const EmbeddedFile& file) {
    const std::string name = nameOf(file);
    return '<' + name.substr(0, name.size() - shelf.extension.size()) + '>';
}

}  // namespace

bool isShippedWord(std::string_view value) {
    return value.starts_with('<') && value.ends_with('>');
}

std::vector<std::string> shippedWords(FileType type) {
    std::vector<std::string> words;
    for (const Shelf& shelf : shelves) {
        if (shelf.type != type || shelf.system != System::windows)
            continue;
        for (const EmbeddedFile& file : embeddedFiles()) {
            if (standsOn(shelf, file))
                words.push_back(wordOf(shelf, file));
        }
    }
    return words;
}

std::optional<ShippedFile> findShipped(FileType type, std::string_view word, System system) {
    for (const Shelf& shelf : shelves) {
        if (shelf.type != type || shelf.system != system)
            continue;
        for (const EmbeddedFile& file : embeddedFiles()) {
            if (standsOn(shelf, file) && wordOf(shelf, file) == word)
                return ShippedFile{nameOf(file), file.content};
        }
    }
    return std::nullopt;
}

ShippedFile shippedVerifyClass() {
    const auto& files = embeddedFiles();
    const auto jar = std::find_if(files.begin(), files.end(), [](const EmbeddedFile& file) {
        return file.name == verifyClass;
    });
    return {nameOf(*jar), jar->content};
}

}  // namespace corvane::pack
