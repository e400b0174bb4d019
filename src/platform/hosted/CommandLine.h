// Windows' one-text command lines: splitting by its rules, quoting, and the launcher's own.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane::hosted {

// What two double quotes inside a quoted part are, besides one literal quote.
enum class QuotePair { keepsQuoting, endsQuoting };

// Splits arguments, the program name not among them: blanks and tabs separate outside quotes, 2n
// backslashes in front of a quote are n backslashes, one more makes the quote literal, and
// backslashes elsewhere are themselves. The C runtime keeps quoting at a pair of quotes.
std::vector<std::string> splitArguments(std::string_view text, QuotePair pair);

// Where the program name of a command line ends: behind its closing quote, or at the first blank.
// Backslashes mean nothing in it.
std::size_t programNameEnd(std::string_view commandLine);

// Joins arguments, quoting where needed, so that splitting gives them again. The first is the
// program name, which can't hold a double quote: any is dropped.
std::string joinCommandLine(const std::vector<std::string>& arguments);

// Gives the process another command line than the one it was started with.
void setCommandLine(const std::string& text);

}  // namespace corvane::hosted
