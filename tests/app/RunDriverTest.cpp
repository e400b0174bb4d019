// The option loop and the exit values.
#include <gtest/gtest.h>

#include "app/RunDriver.h"
#include "support/Payload.h"

namespace corvane {
namespace {

using test::text;

class RunDriverTest : public ::testing::Test {
  protected:
    // Runs the launcher with these arguments.
    std::int32_t start(const std::vector<std::string>& arguments) {
        StringList list;
        for (const std::string& argument : arguments)
            list.add(argument.c_str());
        return runLauncher(list, run.context().launcherPath);
    }
    std::string passedThrough() {
        std::string out;
        for (std::int32_t i = 0; i < run.context().passThroughArgs.count(); ++i)
            out += "[" + text(run.context().passThroughArgs.at(i)) + "]";
        return out;
    }
    void useScript(const std::string& line) {
        run.useLauncher({{FileType::instructions, "s", "INSTRUCTIONS: " + line + "\n", 1}});
    }

    test::LauncherRun run;
};

TEST_F(RunDriverTest, OptionsSetWhatTheyName) {
    useScript("SET N1 = 1");
    EXPECT_EQ(start({"-cv:javahome", "H", "a", "-cp:p", "P", "-cp:a", "A", "-cv:javaconsole",
                     "-accessibility", "-silent", "-console", "-cv:tempdir", "T", "-cv:orig", "O",
                     "-CONSOLE", "-cv:log", ""}),
              0);
    const RunContext& context = run.context();
    EXPECT_EQ(passedThrough(), "[a][-console][-silent][-console][-CONSOLE]");
    EXPECT_EQ(text(context.javaHome), "H");
    EXPECT_EQ(text(context.classpathPrepend), "P");
    EXPECT_EQ(text(context.classpathAppend), "A");
    EXPECT_EQ(text(context.tempDir), "T");
    EXPECT_EQ(text(context.originalLauncherPath), "O");
    EXPECT_TRUE(context.originalLauncherGiven);
    EXPECT_TRUE(context.showChildConsole);
    EXPECT_TRUE(context.silent);
    EXPECT_EQ(context.originalArgs.count(), 18);
    EXPECT_EQ(context.numericVariables[0], 1);
}

TEST_F(RunDriverTest, MissingValues) {
    useScript("SET N1 = 1");
    const struct {
        const char* option;
        const char* message;
        std::int32_t result;
    } cases[] = {
        {"-cv:log", "A log file name must be specified after the -log option on the command line.",
         0},
        {"-cv:orig", "Missing original launcher file name.", 0},
        {"-cv:tempdir", "", 0},
        {"-cv:javahome", "", 0},
        {"-cp:p", "", 0},
        {"-cp:a", "", 0},
        {"-cv:in", "An input file name must follow the '-in' command line option.", -1},
    };
    for (const auto& [option, message, result] : cases) {
        EXPECT_EQ(start({option}), result) << option;
        EXPECT_EQ(run.ui().messages(), message);
        run.ui().take();
    }
    EXPECT_EQ(passedThrough(), "");
    EXPECT_FALSE(run.context().originalLauncherGiven);
}

TEST_F(RunDriverTest, AnOptionsValueMayLookLikeAnOption) {
    start({"-cv:javahome", "-cv:silent"});
    EXPECT_FALSE(run.context().silent);
    EXPECT_EQ(text(run.context().javaHome), "-cv:silent");
}

TEST_F(RunDriverTest, TheVersionReadsNoIndex) {
    run.useLauncher("no launcher at all");
    EXPECT_EQ(start({"-cv:version"}), 0);
    EXPECT_EQ(run.ui().messages(), "2.52");
    EXPECT_FALSE(run.files().indexLoaded);
    run.ui().take();
    EXPECT_EQ(start({"-cv:silent", "-cv:version"}), 0);
    EXPECT_EQ(run.ui().messages(), "");
}

TEST_F(RunDriverTest, AnEarlierFailureCountsOnlyWithoutAScript) {
    useScript("SET N1 = 1");
    EXPECT_EQ(start({"-cv:version", "-cv:log"}), -1);
    EXPECT_EQ(run.context().numericVariables[0], 0);
}

TEST_F(RunDriverTest, FailuresAreShownLoggedAndMinusOne) {
    useScript("SET");
    EXPECT_EQ(start({}), -1);
    const std::string words = "Error in instructions. SET statement is missing =. Line number (1)";
    EXPECT_EQ(run.ui().messages(), words);
    EXPECT_NE(run.log().find("ERROR: " + words + "\n"), std::string::npos);
    run.ui().take();

    run.useLauncher(test::launcherBytes(0, {}).substr(0, 7));
    EXPECT_EQ(start({}), -1);
    EXPECT_EQ(run.ui().messages(),
              "Unable to load the launcher file index. Invalid launcher format.");
    run.useLauncher(test::launcherBytes(0, {}));
    EXPECT_EQ(start({}), -1) << "no instructions";
}

}  // namespace
}  // namespace corvane
