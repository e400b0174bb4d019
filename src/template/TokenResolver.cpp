// One pass over a template.
#include "template/TokenResolver.h"

#include "foundation/Exceptions.h"

namespace corvane {

namespace {

// Bounds far beyond any real template, for one that reproduces itself.
constexpr int mostRepeats = 1000;
constexpr int mostNested = 16;
constexpr std::size_t longestText = std::size_t{1} << 20;

// Notices an expansion that has no end. Scanning moves right, so the next token is nearer to the
// end of the text than the last one, unless it came out of that one. A token may also have to
// expand a text of its own, and that one must not lead back to the token for ever.
class ExpansionGuard {
  public:
    ExpansionGuard() { ++nested_; }
    ExpansionGuard(const ExpansionGuard&) = delete;
    ExpansionGuard& operator=(const ExpansionGuard&) = delete;
    ~ExpansionGuard() { --nested_; }

    // Called for a token that opens `fromEnd` characters in front of the end of the text.
    void enter(std::size_t fromEnd, std::size_t textLength) {
        if (fromEnd >= lastFromEnd_)
            ++repeats_;
        lastFromEnd_ = fromEnd;
        if (repeats_ > mostRepeats || textLength > longestText || nested_ > mostNested)
            throw LauncherException("Launch script error: A token expands to itself.");
    }

  private:
    static inline int nested_ = 0;  // expansions under way, each within the one before

    std::size_t lastFromEnd_ = String::npos;
    int repeats_ = 0;
};

void joinDoubledSeparators(String& text, char separator) {
    const String pair(2, separator);
    for (std::size_t at = text.find(pair); at != String::npos; at = text.find(pair, at + 1))
        text.erase(at, 1);
}

}  // namespace

String expandTemplate(TokenResolver& resolver, const String& text, char separator) {
    String out = text;
    ExpansionGuard guard;
    std::size_t start = out.find(separator);
    // The search for the closing one begins two on, so that no token has an empty name.
    while (start != String::npos) {
        const std::size_t end = out.find(separator, start + 2);
        if (end == String::npos)
            break;
        guard.enter(out.length() - start, out.length());
        resolver.resolveToken(out, separator, start, end);
        start = out.find(separator, start);
    }
    joinDoubledSeparators(out, separator);
    return out;
}

}  // namespace corvane
