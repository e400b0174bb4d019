// What is found wrong with an author's files, and how it is told.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

#include "packer/base/Errors.h"

namespace corvane::pack {

enum class Severity { warning, error };

// Where something stands. Line and column count from 1; 0 is the whole file or the whole line. The
// column counts bytes of the line as it stands in the file.
struct Place {
    std::filesystem::path file;
    int line = 0;
    int column = 0;
};

struct Finding {
    Severity severity = Severity::error;
    const char* rule = "";  // the name by which the docs know the rule, in kebab case
    Place place;
    std::string text;  // what is wrong
    std::string hint;  // what to do about it; may be empty
};

// A mistake that ends the reading of what it stands in.
class Mistake : public PackError {
  public:
    Mistake(const char* rule, Place place, std::string text, std::string hint = {})
        : PackError(text),
          finding{Severity::error, rule, std::move(place), std::move(text), std::move(hint)} {}

    const Finding finding;
};

// Collects findings in the order in which they are told.
class Findings {
  public:
    void error(const char* rule, const Place& place, std::string text, std::string hint = {});
    void add(const Mistake& mistake) { findings_.push_back(mistake.finding); }
    void warning(const char* rule, const Place& place, std::string text, std::string hint = {});

    const std::vector<Finding>& all() const { return findings_; }
    bool hasErrors() const;

    // `file:line:column: error: text`, the author's line with a caret below it, and the hint.
    void print(std::ostream& out) const;
    // The same as one JSON array of objects.
    void printJson(std::ostream& out) const;

  private:
    std::vector<Finding> findings_;
};

// "did you mean NAME?" with the one of `names` that is closest to `word`, or nothing if none is
// close enough to be meant.
std::string didYouMean(const std::string& word, const std::vector<std::string>& names);

}  // namespace corvane::pack
