// The interpreter: lines, jumps, SET, and the arguments of every command.
#include <gtest/gtest.h>

#include "instructions/Instructions.h"
#include "instructions/ScriptRun.h"

namespace corvane {
namespace {

class InstructionsTest : public ::testing::Test {
  protected:
    test::ScriptRun run;
};

TEST_F(InstructionsTest, WithoutAScriptTheValueIsMinusOne) {
    EXPECT_EQ(runInstructions(), -1);
    EXPECT_EQ(run.runScript(""), "0") << "a script without lines is a script";
}

TEST_F(InstructionsTest, Labels) {
    const struct {
        const char* script;
        const char* result;
    } cases[] = {
        {":FIRST\nGOTO FIRST", "Error in instructions. Label not found (FIRST) Line number (2)"},
        {"GOTO L\nSET N1 = x\n:L", "0"},
        {"GOTO L\n:L x", "Error in instructions. Label not found (L) Line number (1)"},
        {"GOTO l\n:L", "Error in instructions. Label not found (l) Line number (1)"},
        {"SET S3 = L\nGOTO @S3@2\nSET N1 = x\n:L2", "0"},
        {"GOTO @S4@\n:L",
         "Error in instructions. Label @S4@ resolved to a blank string. Labels cannot be blank. "
         "Line number (1)"},
        {"GOTO L\nSET N1 = x\n:L\nGOTO E\n:L\nSET N1 = x\n:E", "0"},
        {"JMP0 1 NOWHERE", "0"},
        {"JMP0 0 E trailing words\nSET N1 = x\n:E", "0"},
        {"GOTO @X@",
         "Invalid label specified. Variable references must be at least 2 characters (e.g. N1 "
         "and S10)."},
    };
    for (const auto& [script, result] : cases)
        EXPECT_EQ(run.runScript(script), result) << script;

    // More of them than are kept in mind.
    std::string chain = "GOTO L0\nEXIT 1\n";
    for (int i = 0; i < 200; ++i)
        chain += ":L" + std::to_string(i) + "\nGOTO L" + std::to_string(i + 1) + "\n";
    EXPECT_EQ(run.runScript((chain + ":L200").c_str()), "0");
}

TEST_F(InstructionsTest, Set) {
    const struct {
        const char* line;
        const char* result;
        const char* s1;
    } cases[] = {
        {"SET S1 = hello world", "0", "hello"},
        {"SET s1=a=b", "0", "a=b"},
        {"SET S1 =", "0", ""},
        {"SET S1 = \"a\"\"b\" tail", "0", "a\"b"},
        {"SET S1 = \" two words \"", "0", " two words "},
        {"SET S1 = @N5@", "0", "0"},
        {"SET N1 = 1 + 1", "0", "kept"},
        {"SET", "SET statement is missing =.", "kept"},
        {"SET N9 = 1",
         "Invalid variable specified on left hand side of SET statement. Variable number is "
         "invalid (9)",
         "kept"},
        {"SET N1 = abc",
         "Invalid value specified for SET command Invalid numeric expression in abc", "kept"},
        {"SET S1 = \"abc", "Expected double quote to end argument near 1", "kept"},
        {"SET S1 = \"\"", "Invalid expression specified for SET command Empty expression.", "kept"},
    };
    for (const auto& [line, result, s1] : cases) {
        VariableTable().setStringValue(1, "kept");
        const std::string expected =
            result == std::string("0")
                ? "0"
                : "Error in instructions. " + std::string(result) + " Line number (2)";
        EXPECT_EQ(run.runScript("// first\n" + std::string(line)), expected) << line;
        EXPECT_EQ(run.s(1), s1) << line;
    }
    EXPECT_EQ(run.n(1), 1);
}

TEST_F(InstructionsTest, ExitEndsAndShowTells) {
    EXPECT_EQ(run.runScript("SET S1 = \"a b\"\nSHOW \"@S1@: x\" tail\nSHOW plain word\nEXIT -3\n"
                            "SHOW never"),
              "-3");
    EXPECT_EQ(run.ui().messages(), "a b: x\nplain");
    EXPECT_EQ(run.log(), "------------------\na b: x\nplain\n");
    EXPECT_EQ(run.runScript("SET N1 = @EXIT_VALUE@\nLAUNCH none 0\nSET N2 = @EXIT_VALUE@"), "-1");
    EXPECT_EQ(run.n(1), 0);
    EXPECT_EQ(run.n(2), -1) << "what LAUNCH gives without a launch script";
}

TEST_F(InstructionsTest, APathThatACommandFoundHoldsNoReference) {
    VariableTable().setPathValue(2, "C:\\me@corp\\@N1@\\100%\\C#");
    EXPECT_EQ(run.runScript("SET S3 = @S2@\nSET S4 = \"@S3@ and @S2@\"\nSHOW @S4@"), "0");
    for (const std::int32_t number : {2, 3})
        EXPECT_EQ(run.s(number), "C:\\me@corp\\@N1@\\100%\\C#");
    EXPECT_EQ(run.ui().messages(), run.s(2) + " and " + run.s(2));
    EXPECT_EQ(run.runScript("LAUNCH @S3@ 0"), "-1") << "without a launch script";
}

TEST_F(InstructionsTest, ArgumentsAreCheckedFromLeftToRight) {
    const std::string shows =
        " should be a 1 if the UI should be displayed or a 0 if the UI should be suppressed.";
    const std::string tells =
        " should be a 1 if a find failure message should be displayed in a UI or 0 if no message "
        "should be displayed.";
    const std::string install = "The first argument to INSTALL_JVM should be a 0, 1 or 2.";
    const std::string seconds =
        "should be the number of seconds to display the UI during the launch.";
    const struct {
        const char* line;
        std::string failure;
    } cases[] = {
        {"FIND_JVM", "The first argument to FIND_JVM" + shows},
        {"FIND_JVM 1", "The second argument to FIND_JVM" + tells},
        {"FIND_JVM 2", " Invalid boolean value (2)"},
        {"FIND_JVM @S1@ 2", "Invalid numeric expression ()"},
        {"VERIFY", "The first argument to VERIFY" + shows},
        {"VERIFY 0", "The second argument to VERIFY" + tells},
        {"VERIFY 0 1",
         "The third argument to VERIFY should be the file index number of the jvm file."},
        {"GOTO", "The GOTO command requires a label as its only argument."},
        {"JMP0", "The second argument to JMP0 must be numeric. Empty expression."},
        {"JMP0 x", "The second argument to JMP0 must be numeric.Invalid numeric expression (x)"},
        {"JMP0 1", "JMP0 requires a jump label as its second argument."},
        {"INSTALL_JVM", install},
        {"INSTALL_JVM 3", install},
        {"INSTALL_JVM -1", install},
        {"LAUNCH x", "The second argument to LAUNCH " + seconds},
        {"ILAUNCH",
         "The first argument to ILAUNCH should be the file index number of the jvm "
         "file."},
        {"ILAUNCH x", "Invalid numeric expression (x)"},
        {"ILAUNCH 1", "The second argument to ILAUNCH " + seconds},
        {"EXECUTE_LAUNCHER",
         "The argument to EXECUTE_LAUNCHER should be the position of the embedded launcher in the "
         "file index."},
        {"EXIT", "The EXIT command requires the exit value as its only argument."},
        {"SHOW", "The SHOW command requires the text of a message as its only argument."},
        {"SHOW \"open", "Expected double quote to end argument near 1"},
        {"goto L", "Invalid command (goto). "},
        {"//note", "Invalid command (//note). "},
        {"\v\f", "No command specified."},
    };
    for (const auto& [line, failure] : cases)
        EXPECT_EQ(run.runScript(line), "Error in instructions. " + failure + " Line number (1)")
            << line;
    EXPECT_EQ(run.runScript("LAUNCH \"a b 5"),
              "Expected ending quote in \"a b :  Invalid jvm file name specified in LAUNCH.");
}

}  // namespace
}  // namespace corvane
