// The arguments behind a command's name.
#include "packer/base/Arguments.h"

#include <algorithm>

#include "packer/base/Errors.h"

namespace corvane::pack {

bool Arguments::takeFlag(const std::string& name) {
    return std::erase(words_, name) > 0;
}

std::optional<std::string> Arguments::takeValue(const std::string& name) {
    const auto option = std::find(words_.begin(), words_.end(), name);
    if (option == words_.end())
        return std::nullopt;
    if (option + 1 == words_.end())
        throw UsageError(name + " needs a value behind it");
    std::string value = option[1];
    words_.erase(option, option + 2);
    if (std::find(words_.begin(), words_.end(), name) != words_.end())
        throw UsageError(name + " is given twice");
    return value;
}

std::vector<std::string> Arguments::takeBehindDashes() {
    const auto dashes = std::find(words_.begin(), words_.end(), "--");
    if (dashes == words_.end())
        return {};
    std::vector<std::string> behind(dashes + 1, words_.end());
    words_.erase(dashes, words_.end());
    return behind;
}

std::vector<std::string> Arguments::takeRest(std::size_t least, std::size_t most,
                                             const std::string& wanted) {
    for (const std::string& word : words_) {
        if (word.starts_with("-"))
            throw UsageError("unknown option " + word);
    }
    if (words_.size() > most)
        throw UsageError("unexpected argument " + words_[most]);
    if (words_.size() < least)
        throw UsageError("it needs " + wanted);
    return std::move(words_);
}

}  // namespace corvane::pack
