// The argument lists of a command template.
#include <gtest/gtest.h>

#include "launch/ArgumentList.h"
#include "launch/LaunchRun.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;

TEST(LaunchScriptTest, ArgumentLists) {
    const test::LauncherRun run;
    const struct {
        const char* in;
        const char* out;  // the arguments and where the list ends, or the failure
    } cases[] = {
        {"()", " 2"},
        {" ( ) x", " 4"},
        {"(\"a\")", "a 5"},
        {"(\"a\",)", "a 6"},
        {"( \"a\" , \"b\"\"c\" ) x", "a|b\"c 16"},
        {"(\"a\"", "a npos"},
        {"", "Expected left parenthesis. (near character 0)"},
        {"(", "Expected string arg. (near character 1)"},
        {"(  x", "Expected string arg. (near character 1)"},
        {"(\"a\" x)", "Expected right parenthesis. (near character 4)"},
        {"(\"a\",,", "Expected string arg. (near character 5)"},
        {"(\"a", "Expected double quote to end argument near 2"},
    };
    for (const auto& [in, out] : cases) {
        std::size_t pos = 0;
        StringList arguments;
        std::string result = failureOf([&] { parseArguments(in, pos, arguments); });
        if (result == "no failure") {
            result.clear();
            for (std::int32_t i = 0; i < arguments.count(); ++i)
                result += (i == 0 ? "" : "|") + text(arguments.at(i));
            result += " " + (pos == String::npos ? "npos" : std::to_string(pos));
        } else if (result.starts_with("Launch script error: ")) {
            result.erase(0, 21);
        }
        EXPECT_EQ(result, out) << in;
    }
}

}  // namespace
}  // namespace corvane
