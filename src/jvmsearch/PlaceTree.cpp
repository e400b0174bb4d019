// What a hint with `*` in it stands for.
#include "jvmsearch/PlaceTree.h"

#include <algorithm>
#include <memory>

#include "base/Log.h"
#include "foundation/Exceptions.h"
#include "foundation/VersionOrder.h"
#include "host/DirectoryWalker.h"
#include "host/Paths.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

// The subdirectories of one directory.
class Subdirectories final : public DirectoryWalker {
  public:
    explicit Subdirectories(const String& directory) : DirectoryWalker(true) { walk(directory); }

    // Their paths, behind that of the directory itself.
    using DirectoryWalker::visited;

  private:
    bool onFile(const String&) override { return false; }
    bool skipDirectory(const String&) override { return visited().count() > 1; }
    bool entersLink(const String&) override { return true; }
};

bool isHigher(const String& a, const String& b) {
    const int order = compareVersions(a.view(), b.view());
    return order != 0 ? order > 0 : a.compare(b) > 0;
}

}  // namespace

// Places in their order.
class PlaceTree::Ranking final : public StringList {
  public:
    void take(const String& place) {
        std::int32_t first = 0;
        std::int32_t end = count();
        while (first < end) {
            const std::int32_t middle = first + (end - first) / 2;
            if (isHigher(at(middle), place))
                first = middle + 1;
            else
                end = middle;
        }
        insert(first == count() ? -1 : first, std::make_unique<StringItem>(place));
    }
};

bool fitsPattern(std::string_view name, std::string_view pattern) noexcept {
    std::size_t at = 0;
    std::size_t star = String::npos;  // the last one met, which stands for no more than it must
    std::size_t behindStar = 0;       // where in the name what follows that star was tried
    for (std::size_t i = 0; i < name.length();) {
        if (at < pattern.length() && pattern[at] == wildcard) {
            star = at++;
            behindStar = i;
        } else if (at < pattern.length() && samePath({&name[i], 1}, {&pattern[at], 1})) {
            ++at;
            ++i;
        } else if (star != String::npos) {
            at = star + 1;
            i = ++behindStar;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(wildcard, at) == std::string_view::npos;
}

void PlaceTree::expand(const String& root, const String& pattern, StringList& places) {
    Ranking found;
    collect(root, pattern, found);
    for (const String& place : found)
        places.add(place);
}

// Opens the first name with a `*` in it, and goes on behind each name that fits.
void PlaceTree::collect(const String& front, const String& pattern, Ranking& found) {
    const std::size_t star = pattern.find(wildcard);
    if (star == String::npos) {
        if (pattern.empty() || exists(front + pattern))
            found.take(front + pattern);
        return;
    }
    const std::size_t separator = pattern.rfind('\\', star);
    const std::size_t start = separator == String::npos ? 0 : separator + 1;
    const std::size_t end = std::min(pattern.find('\\', star), pattern.length());
    const String place = front + pattern.substr(0, start);
    for (const String& name : namesBelow(place)) {
        if (fitsPattern(name.view(), {pattern.charAt(start), end - start}))
            collect(place + name, pattern.substr(end), found);
    }
}

const StringList& PlaceTree::namesBelow(const String& place) {
    for (const Listing& listing : listings_) {
        if (listing.place == place)
            return listing.names;
    }
    Listing& listing = *listings_.add(std::make_unique<Listing>());
    listing.place = place;
    list(place, listing.names);
    return listing.names;
}

void DirectoryTree::list(const String& place, StringList& names) const {
    try {
        const Subdirectories directories(place);
        const StringList& paths = directories.visited();
        for (std::int32_t i = 1; i < paths.count(); ++i)
            names.add(lastPathComponent(paths.at(i)));
    } catch (const LauncherException& failure) {
        logMessage(failure.message, LogLevel::warning);
    }
}

bool DirectoryTree::exists(const String& place) const {
    const DWORD attributes = GetFileAttributesA(place.cstr());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace corvane
