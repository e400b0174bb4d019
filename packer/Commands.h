// The pack tool's two commands. Both raise `PackError` with words for the user.
#pragma once

#include <filesystem>
#include <iosfwd>

namespace corvane::pack {

// Builds the launcher that `manifest` describes from the bare launcher `stub` into `output`, which
// appears only when it is whole and is a program as `stub` is.
void build(const std::filesystem::path& manifest, const std::filesystem::path& stub,
           const std::filesystem::path& output);

// Prints the kind and the embedded files of a launcher.
void list(const std::filesystem::path& launcher, std::ostream& out);

}  // namespace corvane::pack
