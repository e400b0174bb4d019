// The option loop, the exit values, and what only a unit test sees of `-cv:in`.
#include <gtest/gtest.h>

#include "driver/RunDriver.h"
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
    std::string passedThrough;
    for (std::int32_t i = 0; i < context.passThroughArgs.count(); ++i)
        passedThrough += "[" + text(context.passThroughArgs.at(i)) + "]";
    EXPECT_EQ(passedThrough, "[a][-console][-silent][-console][-CONSOLE]");
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
    } cases[] = {
        {"-cv:log", "A log file name must be specified after the -log option on the command line."},
        {"-cv:orig", "Missing original launcher file name."},
        {"-cv:tempdir", ""},
        {"-cv:javahome", ""},
        {"-cp:p", ""},
        {"-cp:a", ""},
    };
    for (const auto& [option, message] : cases) {
        EXPECT_EQ(start({option}), 0) << option;
        EXPECT_EQ(run.ui().messages(), message);
        run.ui().take();
    }
    EXPECT_EQ(run.context().passThroughArgs.count(), 0);
    EXPECT_FALSE(run.context().originalLauncherGiven);
}

TEST_F(RunDriverTest, AnOptionsValueMayLookLikeAnOption) {
    start({"-cv:javahome", "-cv:silent"});
    EXPECT_FALSE(run.context().silent);
    EXPECT_EQ(text(run.context().javaHome), "-cv:silent");
}

TEST_F(RunDriverTest, AMisspeltOptionIsLoggedAndGoesToTheApplication) {
    start({"-cv:Silent", "-cp:x"});
    EXPECT_EQ(run.log(),
              "------------------\n"
              "WARNING: -cv:Silent is no option of the launcher. It goes to the application.\n");
    EXPECT_EQ(run.context().passThroughArgs.count(), 2);
}

TEST_F(RunDriverTest, AnEarlierFailureCountsOnlyWithoutAScript) {
    useScript("SET N1 = 1");
    EXPECT_EQ(start({"-cv:version", "-cv:log"}), -1);
    EXPECT_EQ(run.context().numericVariables[0], 0);
}

TEST_F(RunDriverTest, AnInputFileRunsTheScriptWhateverCameBefore) {
    useScript("SET N1 = 7");
    const String path = run.scratch.write("in.tag", "ACTION: RUN_INSTRUCTIONS\nSHOW_PROGRESS: 1\n");
    // Quotes around its name serve the opening alone.
    const std::string name = "\"" + text(path) + "\"";
    std::vector<int> positions;
    run.ui().onProgress = [&] { positions.push_back(run.ui().progress); };
    EXPECT_EQ(start({"-cv:version", "-cv:in", name}), 0);
    EXPECT_EQ(run.context().numericVariables[0], 7);
    EXPECT_EQ(positions, (std::vector<int>{0, 0, 100}));
    EXPECT_EQ(run.ui().take(), (std::vector<std::string>{"showMessage " CORVANE_VERSION, "show"}));
    EXPECT_EQ(text(run.context().logFile), "") << "an input file without a log clears it";
    EXPECT_NE(run.log().find("Loading input file " + name + "\n"), std::string::npos);
}

}  // namespace
}  // namespace corvane
