// What the fuzz targets share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "foundation/String.h"
#include "launcherfile/TagFile.h"
#include "platform/Platform.h"

// One input. An exception that gets out, a sanitizer's complaint or `require` makes it a finding.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace corvane::fuzz {

// Stops the process, which is how libFuzzer learns of a fault.
inline void require(bool holds) {
    if (!holds)
        std::abort();
}

inline std::string inputText(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

inline String counted(const std::string& text) {
    return {text.data(), text.size()};
}

// Reads tags from memory. Raises what `TagFile::read` raises.
inline void readTags(TagFile& tags, std::string text) {
    if (text.empty())
        return;
    const StreamGuard stream(fmemopen(text.data(), text.size(), "rb"));
    tags.read(stream.get(), "input", 0, -1);
}

}  // namespace corvane::fuzz
