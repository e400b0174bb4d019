// The verification class that the tool carries and embeds by default.
#pragma once

#include <string_view>

namespace corvane::pack {

// The bytes of the jar.
std::string_view verifyJar();

}  // namespace corvane::pack
