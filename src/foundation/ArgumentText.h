// Cutting of words and of arguments out of a text, shared by the tag file, the instruction language
// and the command templates.
#pragma once

#include "foundation/String.h"

namespace corvane {

// The next word of `text` from `pos` on, ended by any character of the standard `isspace`. Quotes
// have no meaning. `pos` ends one behind the character, or the end of the text, that ended the
// word. `noMore` tells that nothing but white space was left; the result is then empty and `pos`
// stays.
String nextToken(const String& text, std::size_t& pos, bool& noMore);

// One argument. With `quoted` it begins at `pos`, which stands behind the opening quote; a doubled
// quote stands for one, and `pos` ends behind the closing quote, or as `npos` if nothing follows
// it. A missing closing quote raises a `LauncherException`. Without `quoted` it begins with the
// text, wherever `pos` stands, and ends at the first white space, where `pos` then stands, or
// `npos`.
String readArgument(const String& text, std::size_t& pos, bool quoted);

}  // namespace corvane
