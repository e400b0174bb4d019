// Reading of a jar's manifest.
#include "packer/jar/JarManifest.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace corvane::pack {

namespace {

bool sameName(std::string_view one, std::string_view other) {
    return std::ranges::equal(one, other, [](unsigned char a, unsigned char b) {
        return std::tolower(a) == std::tolower(b);
    });
}

// Takes the first line off, which ends with CR, LF or both.
std::string_view takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end);
    text.remove_prefix(text.starts_with("\r\n") ? 2 : text.empty() ? 0 : 1);
    return line;
}

}  // namespace

// A line that begins with a blank goes on with the one above it, in the middle of a character even.
JarManifest::JarManifest(std::string_view text) {
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        if (line.empty())
            break;
        if (line.front() == ' ' && !attributes_.empty()) {
            attributes_.back().second += line.substr(1);
            continue;
        }
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos)
            continue;
        const std::string_view value = line.substr(colon + 1);
        attributes_.emplace_back(line.substr(0, colon),
                                 value.starts_with(' ') ? value.substr(1) : value);
    }
}

std::string JarManifest::get(std::string_view name) const {
    const auto found = std::ranges::find_if(
        attributes_, [name](const auto& attribute) { return sameName(attribute.first, name); });
    if (found == attributes_.end())
        return {};
    const std::string& value = found->second;
    const std::size_t end = value.find_last_not_of(" \t");
    return end == std::string::npos ? std::string() : value.substr(0, end + 1);
}

std::vector<std::string> JarManifest::words(std::string_view name) const {
    std::istringstream value(get(name));
    std::vector<std::string> words;
    for (std::string word; value >> word;)
        words.push_back(word);
    return words;
}

}  // namespace corvane::pack
