// Text as JSON writes it.
#pragma once

#include <string>
#include <string_view>

namespace corvane::pack {

// `text`, UTF-8, in double quotes and with what JSON wants escaped.
std::string json(std::string_view text);

}  // namespace corvane::pack
