// The command line.
#include "driver/ArgumentVector.h"

#include "base/RunContext.h"
#include "foundation/TextLines.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

// The text in the ANSI code page; empty if it can't be converted.
String wideToAnsi(const WCHAR* wideText) {
    const int size = WideCharToMultiByte(CP_ACP, 0, wideText, -1, nullptr, 0, nullptr, nullptr);
    if (size == 0)
        return {};
    String buffer(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_ACP, 0, wideText, -1, buffer.mutableAt(0), size, nullptr, nullptr);
    return buffer.cstr();
}

// Cuts one argument of `commandLine` from `start` on; `next` is where to go on, or `npos`. In all
// but the first argument a backslash protects a double quote; it stays in front of anything else.
// One loop over the characters; the order of the rules decides.
void parseArgument(const String& commandLine, std::size_t start, bool firstArgument, String& token,
                   std::size_t& next) {
    token.erase();
    std::size_t pos = commandLine.findFirstNotOf(whitespaceChars, start);
    const bool quoted = pos != String::npos && commandLine.at(pos) == '"';
    if (quoted)
        ++pos;
    bool escaped = false;
    bool done = false;
    while (!done && pos < commandLine.length()) {
        const char character = commandLine.at(pos);
        if (!firstArgument && !escaped && character == '\\') {
            escaped = true;
            ++pos;
        } else if (escaped) {
            if (character != '"')
                token.append('\\');
            token.append(character);
            escaped = false;
            ++pos;
        } else if (quoted && character == '"') {
            ++pos;
            done = true;
        } else if (!quoted && isWhite(character)) {
            done = true;
        } else if (quoted || character != '"') {
            token.append(character);
            ++pos;
        } else {
            // A quoted part inside a plain token.
            String part;
            parseArgument(commandLine, pos, firstArgument, part, pos);
            if (pos >= commandLine.length()) {
                pos = String::npos;
                done = true;
            }
            token.append(part);
        }
    }
    next = pos;
}

}  // namespace

void ArgumentVector::build() {
    if (runContext().win9xFamily)
        buildAnsi();
    else
        buildWide();
}

const char* ArgumentVector::at(std::int32_t index) const noexcept {
    return index < 0 || index >= count_ ? nullptr : arguments_.at(index).cstr();
}

void ArgumentVector::buildWide() {
    int wideCount = 0;
    WCHAR** const block = CommandLineToArgvW(GetCommandLineW(), &wideCount);
    if (block == nullptr)
        return;
    count_ = wideCount;
    for (std::int32_t i = 0; i < count_; ++i)
        arguments_.add(wideToAnsi(block[i]));
    GlobalUnlock(GlobalHandle(block));
    GlobalFree(GlobalHandle(block));
}

// An empty token is dropped and doesn't count.
void ArgumentVector::buildAnsi() {
    const String line = GetCommandLineA();
    String token;
    std::size_t pos = line.findFirstNotOf(whitespaceChars);
    while (pos != String::npos) {
        parseArgument(line, pos, count_ == 0, token, pos);
        if (!token.empty()) {
            arguments_.add(token);
            ++count_;
        }
        pos = line.findFirstNotOf(whitespaceChars, pos);
    }
}

}  // namespace corvane
