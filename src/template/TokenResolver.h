// `expandTemplate`, one pass over a template whose tokens stand between two equal separators, and
// `TokenResolver`, which knows what a token stands for.
#pragma once

#include <cstddef>

#include "foundation/String.h"

namespace corvane {

class TokenResolver {
  public:
    // Replaces one token of `text` in place. `start` and `end` are the positions of its two
    // separators.
    virtual void resolveToken(String& text, char separator, std::size_t start, std::size_t end) = 0;

  protected:
    ~TokenResolver() = default;
};

// `text` with its tokens replaced. What a token was replaced by is scanned again. A doubled
// separator that opens no token becomes a single one. A token that goes on producing itself, or a
// text that grows beyond all use, raises a `LauncherException`.
String expandTemplate(TokenResolver& resolver, const String& text, char separator);

}  // namespace corvane
