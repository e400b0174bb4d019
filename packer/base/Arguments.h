// The arguments behind a command's name.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corvane::pack {

// Options may stand in any order, before or behind the other arguments. A command takes out those
// it knows and asks for the rest in the end, so what it doesn't know is told to the user.
class Arguments {
  public:
    explicit Arguments(std::vector<std::string> words) : words_(std::move(words)) {}

    // Whether the option `name` is there.
    bool takeFlag(const std::string& name);
    // The word behind the option `name`. Raises `UsageError` when it is given twice or has none.
    std::optional<std::string> takeValue(const std::string& name);
    // The words behind `--`, which belong to somebody else.
    std::vector<std::string> takeBehindDashes();
    // What is left, at least `least` and at most `most` words that are no options. Raises
    // `UsageError` otherwise, with `wanted` as what should be there ("one file").
    std::vector<std::string> takeRest(std::size_t least, std::size_t most,
                                      const std::string& wanted);

  private:
    std::vector<std::string> words_;
};

}  // namespace corvane::pack
