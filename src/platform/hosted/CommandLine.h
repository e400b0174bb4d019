// Windows' one-text command lines: splitting by its rules, quoting, and the launcher's own.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/ArgumentReader.h"

namespace corvane::hosted {

using corvane::QuotePair;

// Splits arguments, the program name not among them. The C runtime keeps quoting at a pair of
// quotes.
std::vector<std::string> splitArguments(std::string_view text, QuotePair pair);

// How long the program name of a command line is, its quotes included.
std::size_t programNameEnd(std::string_view commandLine);

// Joins arguments, quoting where needed, so that splitting gives them again. The first is the
// program name, which can't hold a double quote: any is dropped.
std::string joinCommandLine(const std::vector<std::string>& arguments);

// Gives the process another command line than the one it was started with.
void setCommandLine(const std::string& text);

}  // namespace corvane::hosted
