// The cutting of words and arguments out of a line, wherever in the line it begins.
#include "Fuzz.h"
#include "foundation/ArgumentText.h"
#include "foundation/TextLines.h"
#include "instructions/Instructions.h"
#include "launch/ArgumentList.h"
#include "support/TestContext.h"
#include "variables/VariableTable.h"

using namespace corvane;

namespace {

void cutWords(const String& line) {
    bool noMore = false;
    for (std::size_t pos = 0; !noMore;) {
        const std::size_t before = pos;
        const String word = nextToken(line, pos, noMore);
        fuzz::require(noMore ? word.empty() : pos > before && !word.empty());
    }
}

// A text within quotes, its own quotes doubled, is read as it was.
void readQuotedWhole(const String& line) {
    String quoted("\"");
    for (const char character : line.view())
        quoted.append(character).append(character == '"' ? "\"" : "");
    quoted.append('"');
    std::size_t pos = 1;
    fuzz::require(readArgument(quoted, pos, true) == line && pos == String::npos);
}

void cutArguments(const String& line, std::size_t start) {
    std::size_t pos = start;
    test::failureOf([&] {
        readArgument(line, pos, true);
        fuzz::require(pos > start);
    });
    const TagFile tags;
    Instructions instructions(tags);
    pos = start;
    test::failureOf([&] {
        String argument;
        instructions.parseStringArgument(line, pos, argument, "");
        fuzz::require(pos >= start && pos <= line.length());
    });
    pos = start;
    test::failureOf([&] {
        StringList arguments;
        parseArguments(line, pos, arguments);
    });
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const test::TestContext run;
    VariableTable().setStringValue(1, "two words");
    VariableTable().setStringValue(2, "@S2@");
    const String line = fuzz::counted(fuzz::inputText(data, size));
    cutWords(line);
    readQuotedWhole(line);
    for (std::size_t start = 0; start <= line.length(); ++start)
        cutArguments(line, start);
    return 0;
}
