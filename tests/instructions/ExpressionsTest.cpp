// Replacement of variable references, numbers, string arguments.
#include <gtest/gtest.h>

#include "instructions/ScriptRun.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;

class ExpressionsTest : public ::testing::Test {
  protected:
    std::string expanded(const std::string& in) {
        String out = in.c_str();
        const std::string failure = failureOf([&] { instructions.expand(out, "ctx"); });
        return failure == "no failure" ? text(out) : failure;
    }

    test::LauncherRun run;
    TagFile tags;
    Instructions instructions{tags};
    VariableTable variables;
};

TEST_F(ExpressionsTest, References) {
    variables.setNumericValue(2, -5);
    variables.setStringValue(1, "@N2@");
    variables.setStringValue(2, "x@s1@y");
    variables.setStringValue(3, "");
    variables.setStringValue(4, "at@home");
    variables.setStringValue(5, "@N2");
    const struct {
        const char* in;
        const char* out;
    } cases[] = {
        {"@N1@", "0"},
        {"@n2@", "-5"},
        {"@S1@", "-5"},
        {"<@S2@@S2@>", "<x-5yx-5y>"},
        {"@S3@", ""},
        {"a@@b", "a@b"},
        {"@@@@", "@@"},
        {"a@@b@N1@", "ctx Invalid variable specification. @1"},
        {"@S4@", "ctx Invalid variable specification. @1"},
        {"@S5@@@", "-5"},
        {"", "ctx Empty expression. @1"},
    };
    for (const auto& [in, out] : cases)
        EXPECT_EQ(expanded(in), out) << in;
}

TEST_F(ExpressionsTest, AnExpansionWithoutEndIsABadReference) {
    const std::string failure = "ctx Invalid variable specification. @1";
    variables.setStringValue(1, "@S2@");
    variables.setStringValue(2, "x@S1@");
    EXPECT_EQ(expanded("@S1@"), failure);
    // These would fill the memory before the passes are used up.
    const std::string filler(1000, 'x');
    variables.setStringValue(1, ("@S1@" + filler + "@S1@").c_str());
    EXPECT_EQ(expanded("@S1@"), failure);
    std::string many;
    for (int i = 0; i < 1000; ++i)
        many += "@S1@";
    variables.setStringValue(1, many.c_str());
    EXPECT_EQ(expanded("@S1@"), failure);
}

TEST_F(ExpressionsTest, Numbers) {
    variables.setNumericValue(1, 12);
    EXPECT_EQ(instructions.evaluateInteger("-@N1@3abc", ""), -123);
    EXPECT_EQ(instructions.evaluateInteger("+7", ""), 7);
    EXPECT_EQ(instructions.evaluateShort("-3", ""), -3);
    EXPECT_TRUE(instructions.evaluateBool("1", ""));
    EXPECT_FALSE(instructions.evaluateBool("@N2@", ""));
    EXPECT_EQ(failureOf([&] { instructions.evaluateShort("x", "ctx"); }),
              "ctx Invalid numeric expression (x) @1");
    for (const std::string bad : {"-1", "@N1@"}) {
        EXPECT_EQ(failureOf([&] { instructions.evaluateBool(bad.c_str(), "ctx"); }),
                  "ctx Invalid boolean value (" + bad + ") @1");
    }
}

TEST_F(ExpressionsTest, StringArguments) {
    variables.setStringValue(1, "two words");
    const struct {
        const char* line;
        const char* argument;
        const char* rest;
    } cases[] = {
        {"  plain 5", "plain", " 5"},
        {"\"a b\" 5", "a b", " 5"},
        {"\"a\"\"b\" 5", "a\"b", " 5"},
        {"\"a\"\"\" 5", "a\"", " 5"},
        {"@S1@ 5", "two words", " 5"},
        {"\"<@S1@>\" 5", "<two words>", " 5"},
        {"", "", ""},
        {"ab", "a", ""},
    };
    for (const auto& [line, argument, rest] : cases) {
        std::size_t pos = 0;
        String out = "left over";
        instructions.parseStringArgument(line, pos, out, "ctx");
        EXPECT_EQ(text(out), argument) << line;
        EXPECT_EQ(text(String(line).substr(pos)), rest) << line;
    }
    for (const char* line : {"\"open ", "\"a\"\" 5", "\"a\""}) {
        std::size_t pos = 0;
        String out;
        const auto parse = [&] { instructions.parseStringArgument(line, pos, out, "ctx"); };
        EXPECT_TRUE(failureOf(parse).starts_with("Expected ending quote in \"")) << line;
    }
}

}  // namespace
}  // namespace corvane
