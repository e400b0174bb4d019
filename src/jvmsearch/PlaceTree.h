// `PlaceTree`: what a hint with `*` in it stands for.
#pragma once

#include <string_view>

#include "foundation/ObjectArray.h"
#include "foundation/String.h"
#include "foundation/StringList.h"

namespace corvane {

inline constexpr char wildcard = '*';

// Names below names, with backslashes between them: the directories of the drives, the keys of the
// registry. Keeps what it has listed, so that hints which differ only in their ends share it. Made
// for the hints of one JVM file and gone with them, since what is installed may change.
class PlaceTree {
  public:
    virtual ~PlaceTree() = default;

    // Appends the places that `pattern`, behind `root`, stands for: each `*` in it is any run of
    // characters within one name, case ignored. From the highest to the lowest: by the versions in
    // their paths and, where these are alike, by the paths as texts.
    void expand(const String& root, const String& pattern, StringList& places);

  private:
    // Appends the names below `place`, which ends with a backslash; none if it can't be listed.
    virtual void list(const String& place, StringList& names) const = 0;
    // Whether a place is worth trying whose last names were not listed.
    virtual bool exists(const String& place) const = 0;

    const StringList& namesBelow(const String& place);

    struct Listing {
        String place;
        StringList names;
    };
    class Ranking;
    void collect(const String& front, const String& pattern, Ranking& found);

    ListOf<Listing> listings_;
};

// The directories of the drives, and links to directories.
class DirectoryTree final : public PlaceTree {
    void list(const String& place, StringList& names) const override;
    bool exists(const String& place) const override;
};

// Whether `name` is what `pattern` says, case ignored.
bool fitsPattern(std::string_view name, std::string_view pattern) noexcept;

}  // namespace corvane
