// UTF-8 to UTF-16 and back, without loss: a byte that is no UTF-8 becomes the lone low surrogate
// U+DC00 + byte (so U+DC80 to U+DCFF), and that becomes the byte again.
#pragma once

#include <string>
#include <string_view>

namespace corvane::hosted {

std::u16string toWide(std::string_view text);

// Any other lone surrogate becomes U+FFFD.
std::string toNarrow(std::u16string_view text);

}  // namespace corvane::hosted
