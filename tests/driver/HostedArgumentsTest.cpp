// Command lines that only the stand-in lets a test choose, as the Windows 95 family's path reads
// them.
#include <gtest/gtest.h>

#include "driver/ArgumentVector.h"
#include "platform/hosted/CommandLine.h"
#include "support/TestContext.h"

namespace corvane {
namespace {

TEST(HostedArgumentsTest, TheRulesOfTheAnsiPath) {
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
        {"prog \"ab\"cd", "[prog][ab][cd]"},
        {"prog ab\"c d\"ef", "[prog][abc def]"},
        {"prog a\"b\"\"c\"d e", "[prog][abcd][e]"},
        {"prog \"a\\\"b\" c", "[prog][a\"b][c]"},
    };
    test::TestContext run;
    run.context.win9xFamily = true;
    for (const auto& [line, arguments] : cases) {
        hosted::setCommandLine(line);
        ArgumentVector vector;
        vector.build();
        std::string out;
        for (std::int32_t i = 0; i < vector.count(); ++i)
            out += std::string("[") + vector.at(i) + "]";
        EXPECT_EQ(out, arguments) << line;
    }
}

}  // namespace
}  // namespace corvane
