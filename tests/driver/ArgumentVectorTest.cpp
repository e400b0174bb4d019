// The command line, as the Windows 95 family's path reads it.
#include <gtest/gtest.h>

#include "driver/ArgumentVector.h"
#include "support/TestContext.h"

namespace corvane {
namespace {

using test::text;

// All arguments of a line, each within brackets, by the rules of `ArgumentVector::build`.
std::string split(const std::string& commandLine) {
    const String line = commandLine.c_str();
    std::string out;
    std::int32_t count = 0;
    std::size_t pos = line.findFirstNotOf(" \t\n\r");
    while (pos != String::npos) {
        String token;
        EXPECT_TRUE(parseArgument(line, pos, count == 0, token, pos));
        if (!token.empty()) {
            out += "[" + text(token) + "]";
            ++count;
        }
        pos = line.findFirstNotOf(" \t\n\r", pos);
    }
    return out;
}

TEST(ArgumentVectorTest, TheRulesOfTheAnsiPath) {
    const struct {
        const char* line;
        const char* arguments;
    } cases[] = {
        {"", ""},
        {"  \t ", ""},
        {"\"my prog.exe\" -x", "[my prog.exe][-x]"},
        {"prog \"\" a", "[prog][a]"},
        {"\"\" prog\\ a\\ b", "[prog\\][a\\ b]"},
        {"prog foo\\", "[prog][foo]"},
        {"prog \"C:\\dir\\\"", "[prog][C:\\dir\"]"},
        {"prog \"open to the end", "[prog][open to the end]"},
        {"prog \\\"x\\\" \\\\ \\y", "[prog][\"x\"][\\\\][\\y]"},
        {"prog a\\ b", "[prog][a\\ b]"},
        {"prog \"ab\"cd", "[prog][ab][cd]"},
        {"prog ab\"c d\"ef", "[prog][abc def]"},
        {"prog a\"b\"\"c\"d e", "[prog][abcd][e]"},
        {"prog \"a\\\"b\" c", "[prog][a\"b][c]"},
    };
    for (const auto& [line, arguments] : cases)
        EXPECT_EQ(split(line), arguments) << line;
}

TEST(ArgumentVectorTest, BothPathsReadThisProcess) {
    test::TestContext run;
    ArgumentVector wide;
    EXPECT_TRUE(wide.build());
    ASSERT_GE(wide.count(), 1);
    EXPECT_EQ(wide.at(-1), nullptr);
    EXPECT_EQ(wide.at(wide.count()), nullptr);
    run.context.win9xFamily = true;
    ArgumentVector ansi;
    EXPECT_TRUE(ansi.build());
    ASSERT_EQ(ansi.count(), wide.count());
    for (std::int32_t i = 0; i < wide.count(); ++i)
        EXPECT_STREQ(ansi.at(i), wide.at(i));
}

}  // namespace
}  // namespace corvane
