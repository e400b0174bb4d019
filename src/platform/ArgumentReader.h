// How one argument is read from a command line, by Windows' rules, on every system.
#pragma once

namespace corvane {

// What two double quotes inside a quoted part are, besides one literal quote.
enum class QuotePair { keepsQuoting, endsQuoting };

// Other white space is part of an argument.
template <class Char>
constexpr bool dividesArguments(Char c) noexcept {
    return c == ' ' || c == '\t';
}

// Where the next argument starts, or `end`.
template <class Char>
const Char* skipBlanks(const Char* at, const Char* end) noexcept {
    while (at != end && dividesArguments(*at))
        ++at;
    return at;
}

// Where the program name that a command line begins with ends: behind its closing quote, or at the
// first blank. Backslashes mean nothing in it, and an unclosed quote takes the whole line.
template <class Char>
const Char* skipProgramName(const Char* at, const Char* end) noexcept {
    const bool quoted = at != end && *at == '"';
    if (quoted)
        ++at;
    while (at != end && (quoted ? *at != '"' : !dividesArguments(*at)))
        ++at;
    return quoted && at != end ? at + 1 : at;
}

// Hands the characters of the argument that starts at `at` to `put`, and gives where it ends.
// Blanks and tabs separate outside quotes, 2n backslashes in front of a quote are n backslashes,
// one more makes the quote literal, and backslashes elsewhere are themselves.
template <class Char, class Put>
const Char* readArgument(const Char* at, const Char* end, QuotePair pair, const Put& put) {
    bool quoted = false;
    while (at != end && (quoted || !dividesArguments(*at))) {
        // What a run of backslashes means shows at the character behind it.
        const Char* const run = at;
        while (at != end && *at == '\\')
            ++at;
        const bool atQuote = at != end && *at == '"';
        // In front of a quote each two are one, and an odd one makes the quote literal.
        for (auto count = atQuote ? (at - run) / 2 : at - run; count > 0; --count)
            put(Char{'\\'});
        if (!atQuote) {
            if (at == run)
                put(*at++);
            continue;
        }
        const bool literal = (at - run) % 2 != 0;
        const bool paired = !literal && quoted && at + 1 != end && at[1] == '"';
        if (literal || paired)
            put(*at);
        if (!literal)
            quoted = paired ? pair == QuotePair::keepsQuoting : !quoted;
        at += paired ? 2 : 1;
    }
    return at;
}

}  // namespace corvane
