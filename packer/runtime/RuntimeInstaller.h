// Making of a runtime installer: the self-extractor with a packed runtime image behind it
// (docs/runtime.md).
#pragma once

#include <filesystem>
#include <string>

#include "packer/runtime/RuntimeImage.h"

namespace corvane::pack {

// Whether the launcher can keep runtimes in `place`: it begins with a %VARIABLE% or is absolute,
// and holds no character that a directory's name can't have.
bool isKeepPlace(const std::string& place);
inline constexpr const char* noKeepPlace = "not a directory to keep a runtime in: ";
inline constexpr const char* keepPlaceHint =
    "begin it with a variable: %LOCALAPPDATA%\\My App\\runtime";

// The bytes of `unpacker`, a bare self-extractor for the image's system, and behind them the image.
// `place` is where the runtime is kept between runs; empty for none. The same input gives the same
// bytes. Raises `PackError`.
std::string makeRuntimeInstaller(const RuntimeImage& image, const std::filesystem::path& unpacker,
                                 const std::string& place);

}  // namespace corvane::pack
