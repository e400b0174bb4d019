// A tag file that knows where its tags and values stand.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "launcherfile/TagFile.h"
#include "packer/base/Findings.h"

namespace corvane::pack {

// The tag of a note, which nobody reads: "//: text". It may stand any number of times.
inline constexpr std::string_view noteTag = "//";

class PlacedTags final : public TagFile {
  public:
    // A name as it was read; one that stands twice is here twice.
    struct Name {
        std::string name;
        int line = 0;
        std::vector<int> valueLines;
        bool replaced = false;  // by a later one
    };

    // The text of the file at `path`; that path stands in the places.
    PlacedTags(std::filesystem::path path, std::string text);

    // Reads the text as the launcher will. Tells what is wrong with it as it stands: a byte order
    // mark, UTF-16, a syntax error, text behind a closing quote, a name that stands twice. False
    // after an error.
    bool readAll(Findings& findings);
    // Tells when the last line doesn't end. What is embedded behind it would go on in it.
    void checkEnd(Findings& findings) const;

    // Where a tag's name stands; the whole file without it.
    Place placeOfTag(const std::string& tag) const;
    // Where a byte of a value stands, or the tag if it has no such value.
    Place place(const std::string& tag, std::size_t index = 0, std::size_t offset = 0) const;

    const std::vector<Name>& names() const { return names_; }
    const std::filesystem::path& path() const { return path_; }

  private:
    void onTag(const String& name) override;
    void onValue() override;
    bool checkBytes(Findings& findings) const;
    void checkNames(Findings& findings) const;
    void checkQuotes(const Name& name, Findings& findings) const;
    const Name* find(const std::string& tag) const;
    std::string lineAt(int line) const;
    Place at(int line, int column) const { return {path_, line, column}; }

    std::filesystem::path path_;
    std::string text_;
    std::vector<Name> names_;
};

}  // namespace corvane::pack
