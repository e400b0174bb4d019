// Hints with `*` in a tree of names: the first line is the pattern, the others are places.
#include <algorithm>
#include <cctype>
#include <set>
#include <sstream>
#include <vector>

#include "Fuzz.h"
#include "jvmsearch/PlaceTree.h"
#include "support/TestContext.h"

using namespace corvane;

namespace {

constexpr const char* root = "\\";

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        parts.push_back(part);
    return parts;
}

// The places of the input, listed forwards or backwards.
class InputTree final : public PlaceTree {
  public:
    InputTree(const std::vector<std::string>& lines, bool reversed) : reversed_(reversed) {
        for (std::size_t i = 1; i < lines.size(); ++i)
            add(lines[i]);
    }

    std::vector<std::string> expanded(const std::string& pattern) {
        StringList places;
        expand(root, fuzz::counted(pattern), places);
        std::vector<std::string> result;
        for (const String& place : places)
            result.push_back(test::text(place));
        return result;
    }

  private:
    void add(const std::string& path) {
        std::string place = root;
        for (const std::string& name : split(path, '\\')) {
            if (name.empty())
                continue;
            edges_.insert({place, name});
            place += name + '\\';
        }
    }

    void list(const String& place, StringList& names) const override {
        std::vector<String> found;
        for (const auto& [parent, name] : edges_) {
            if (parent == test::text(place))
                found.push_back(fuzz::counted(name));
        }
        if (reversed_)
            std::reverse(found.begin(), found.end());
        for (const String& name : found)
            names.add(name);
    }
    bool exists(const String&) const override { return true; }

    std::set<std::pair<std::string, std::string>> edges_;
    bool reversed_;
};

// The plain way: each star takes nothing, or one character and stays.
bool fitsPlainly(std::string_view name, std::string_view pattern) {
    std::vector<bool> reached(name.size() + 1);
    reached[0] = true;
    for (const char wanted : pattern) {
        std::vector<bool> next(name.size() + 1);
        for (std::size_t i = 0; i <= name.size(); ++i) {
            if (wanted == wildcard)
                next[i] = reached[i] || (i > 0 && next[i - 1]);
            else
                next[i] = i > 0 && reached[i - 1] &&
                          std::tolower(static_cast<unsigned char>(name[i - 1])) ==
                              std::tolower(static_cast<unsigned char>(wanted));
        }
        reached = std::move(next);
    }
    return reached[name.size()];
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const test::TestContext run;
    std::string text = fuzz::inputText(data, size);
    std::replace(text.begin(), text.end(), '\0', '0');
    const std::vector<std::string> lines = split(text, '\n');
    if (lines.empty())
        return 0;
    for (const std::string& line : lines)
        fuzz::require(fitsPattern(line, lines[0]) == fitsPlainly(line, lines[0]));
    const std::vector<std::string> places = InputTree(lines, false).expanded(lines[0]);
    fuzz::require(InputTree(lines, true).expanded(lines[0]) == places);
    for (const std::string& place : places)
        fuzz::require(place.starts_with(root) && fitsPattern(place, root + lines[0]));
    return 0;
}
