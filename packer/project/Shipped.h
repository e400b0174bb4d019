// What ships with the tool, so that a project needs none of its own. A manifest names it by a word
// in angle brackets in the place of a file: `JVM: <17+>`.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "launcherfile/PayloadFormat.h"
#include "packer/payload/Stub.h"

namespace corvane::pack {

struct ShippedFile {
    std::string name;  // as an embedded file, and when it is written into a project
    std::string_view content;
};

// Whether `value` has the form of such a word.
bool isShippedWord(std::string_view value);

// All words for files of a type, with their brackets; most types have none.
std::vector<std::string> shippedWords(FileType type);

// What the word (with its brackets) stands for, if it is one of `shippedWords`.
std::optional<ShippedFile> findShipped(FileType type, std::string_view word, System system);

// The jar with the verification class, which is packed unless the manifest says otherwise.
ShippedFile shippedVerifyClass();

}  // namespace corvane::pack
