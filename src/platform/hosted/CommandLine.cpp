// Command lines. The host hands over a list of arguments, Windows one text: the text is made so
// that its splitting gives the list again.
#include "platform/hosted/CommandLine.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/Handles.h"
#include "platform/hosted/SystemOperations.h"
#include "platform/hosted/WideText.h"

namespace corvane::hosted {

namespace {

constexpr const char* blanks = " \t";

// Backslashes are doubled only in front of a quote, the closing one among them.
std::string quoted(const std::string& argument) {
    std::string result(1, '"');
    std::size_t backslashes = 0;
    for (const char c : argument) {
        if (c == '"') {
            result.append(backslashes + 1, '\\');
        }
        backslashes = c == '\\' ? backslashes + 1 : 0;
        result += c;
    }
    return result.append(backslashes, '\\') + "\"";
}

std::string quotedIfNeeded(const std::string& argument) {
    const bool plain =
        !argument.empty() && argument.find_first_of(" \t\n\v\"") == std::string::npos;
    return plain ? argument : quoted(argument);
}

// Backslashes in front of the closing quote stay single here.
std::string programName(std::string name) {
    std::erase(name, '"');
    const bool plain = !name.empty() && name.find_first_of(blanks) == std::string::npos;
    return plain ? name : std::string(1, '"').append(name).append(1, '"');
}

// The host ends each argument with a NUL.
std::vector<std::string> hostArguments() {
    const std::string text = readHostFile("/proc/self/cmdline").value_or("");
    std::vector<std::string> arguments;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\0', start), text.size());
        arguments.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return arguments;
}

// Both forms of the command line, which callers get pointers into.
struct OwnCommandLine {
    explicit OwnCommandLine(const std::string& text) : narrow(text), wide(toWide(text)) {}
    std::string narrow;
    std::u16string wide;
};

OwnCommandLine& ownCommandLine() {
    static OwnCommandLine& own = *new OwnCommandLine(joinCommandLine(hostArguments()));
    return own;
}

// One block: the pointers, then the texts.
LPWSTR* packArguments(const std::vector<std::u16string>& arguments) {
    std::size_t units = 0;
    for (const std::u16string& argument : arguments) {
        units += argument.size() + 1;
    }
    const std::size_t pointers = arguments.size() * sizeof(LPWSTR);
    void* block = std::malloc(pointers + units * sizeof(WCHAR));
    if (block == nullptr) {
        fail(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    auto* vector = static_cast<LPWSTR*>(block);
    auto* text = static_cast<LPWSTR>(static_cast<void*>(vector + arguments.size()));
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::u16string& argument = arguments[i];
        std::memcpy(text, argument.c_str(), (argument.size() + 1) * sizeof(WCHAR));
        vector[i] = text;
        text += argument.size() + 1;
    }
    return vector;
}

}  // namespace

std::vector<std::string> splitArguments(std::string_view text, QuotePair pair) {
    std::vector<std::string> arguments;
    const char* const end = text.data() + text.size();
    const char* at = skipBlanks(text.data(), end);
    while (at != end) {
        std::string& argument = arguments.emplace_back();
        at = readArgument(at, end, pair, [&](char c) { argument += c; });
        at = skipBlanks(at, end);
    }
    return arguments;
}

std::size_t programNameEnd(std::string_view commandLine) {
    const char* const begin = commandLine.data();
    return static_cast<std::size_t>(skipProgramName(begin, begin + commandLine.size()) - begin);
}

std::string joinCommandLine(const std::vector<std::string>& arguments) {
    std::string line = programName(arguments.empty() ? "" : arguments[0]);
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        line.append(1, ' ').append(quotedIfNeeded(arguments[i]));
    }
    return line;
}

void setCommandLine(const std::string& text) {
    ownCommandLine() = OwnCommandLine(text);
}

}  // namespace corvane::hosted

using namespace corvane::hosted;

LPSTR GetCommandLineA() {
    return ownCommandLine().narrow.data();
}

LPWSTR GetCommandLineW() {
    return ownCommandLine().wide.data();
}

LPWSTR* CommandLineToArgvW(LPCWSTR commandLine, int* count) {
    if (injectedFailure(__func__)) {
        return nullptr;
    }
    const std::string line = toNarrow(commandLine);
    const std::size_t end = programNameEnd(line);
    std::string name = line.substr(0, end);
    std::erase(name, '"');
    std::vector<std::u16string> arguments{toWide(name)};
    // The operation differs from the C runtime in pairs of quotes.
    for (const std::string& argument : splitArguments(line.substr(end), QuotePair::endsQuoting)) {
        arguments.push_back(toWide(argument));
    }
    *count = static_cast<int>(arguments.size());
    return packArguments(arguments);
}
