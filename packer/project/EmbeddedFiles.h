// The files that are built into the tool, so that it is one file.
#pragma once

#include <string_view>
#include <vector>

namespace corvane::pack {

struct EmbeddedFile {
    std::string_view name;  // with the last of its folders: "windows/17.jvm"
    std::string_view content;
};

const std::vector<EmbeddedFile>& embeddedFiles();

}  // namespace corvane::pack
