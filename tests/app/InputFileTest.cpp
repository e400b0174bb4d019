// `-cv:extract`, `-cv:in` and its actions.
#include <gtest/gtest.h>

#include "app/InputFile.h"
#include "app/RunDriver.h"
#include "support/JavaHome.h"
#include "support/Payload.h"

namespace corvane {
namespace {

using test::text;
using Calls = std::vector<std::string>;

class InputFileTest : public ::testing::Test {
  protected:
    InputFileTest() {
        run.useLauncher({{FileType::instructions, "s", "INSTRUCTIONS: SET N1 = 7\n", 1}});
    }

    std::int32_t start(const std::vector<std::string>& arguments) {
        StringList list;
        for (const std::string& argument : arguments)
            list.add(argument.c_str());
        return runLauncher(list, run.context().launcherPath);
    }
    std::string input(const std::string& content) {
        return text(run.scratch.write("in.tag", content));
    }
    std::string printed(auto&& action) {
        ::testing::internal::CaptureStdout();
        action();
        std::string out = ::testing::internal::GetCapturedStdout();
        std::erase(out, '\r');
        return out;
    }

    test::LauncherRun run;
};

TEST_F(InputFileTest, RunInstructionsRunsTheScriptWhateverCameBefore) {
    EXPECT_EQ(start({"-cv:version", "-cv:in", input("ACTION: RUN_INSTRUCTIONS\n")}), 0);
    EXPECT_EQ(run.context().numericVariables[0], 7);
    EXPECT_EQ(run.ui().take(), (Calls{"showMessage 2.52", "hide 0"}));
    EXPECT_EQ(text(run.context().logFile), "") << "an input file without a log clears it";
    EXPECT_NE(run.log().find("Loading input file " + text(run.scratch.path("in.tag"))),
              std::string::npos);
}

TEST_F(InputFileTest, QuotesAroundTheNameServeTheOpeningAlone) {
    const std::string name = "\"" + input("ACTION: RUN_INSTRUCTIONS\nSHOW_PROGRESS: 1\n") + "\"";
    EXPECT_EQ(start({"-cv:in", name}), 0);
    EXPECT_EQ(run.ui().take(), Calls{"show"});
    EXPECT_NE(run.log().find("Loading input file " + name + "\n"), std::string::npos);
}

TEST_F(InputFileTest, FailuresOfTheFile) {
    const std::string open =
        "Unable to open input file specified on the command line after the -in option.";
    for (const std::string& name : {std::string(), text(run.scratch.path("none"))}) {
        EXPECT_EQ(start({"-cv:in", name}), -1);
        EXPECT_EQ(run.ui().messages(), "Could not load the input file." + open + "\n" + open);
        run.ui().take();
    }
    EXPECT_EQ(start({"-cv:in", input("SYNTAX\n")}), -1);
    EXPECT_EQ(run.ui().messages().find("Could not load the input file.Syntax error in "), 0u);
    run.ui().take();
    EXPECT_EQ(start({"-cv:in", input("INSTRUCTIONS: none.tag\nACTION: SEARCH\n")}), -1);
    const std::string words = "Error loading instructions file.Unable to load input file: none.tag";
    EXPECT_EQ(run.ui().messages(), words + "\n" + words);
    run.ui().take();
    EXPECT_EQ(start({"-cv:in", input("ACTION: search\n")}), -1);
    EXPECT_EQ(run.ui().messages(),
              "Invalid action in input file: search\nInvalid action in input file: search");
}

TEST_F(InputFileTest, VerifyNeedsBothKeysAndPrintsItsResult) {
    EXPECT_EQ(printed([&] {
                  EXPECT_EQ(
                      start({"-cv:in", input("LOGFILE: " + text(run.scratch.path("other.log")) +
                                             "\nACTION: VERIFY_JVM\n")}),
                      -1);
              }),
              "");
    EXPECT_NE(run.scratch.read("other.log")
                  .find("ERROR: TO execute the VERIFY_JVM action, you must also provide values in "
                        "the input file for VERIFY_JVM_FILE and VERIFY_JVM_HOME."),
              std::string::npos);
    EXPECT_EQ(run.ui().progress, 0) << "the console's progress would print a line";

    const String home = test::makeJavaHome(run.scratch, "jdk", "version=17\n");
    run.scratch.write("jvm", "JVM_EXE: bin\\java.exe\nJVM_PROPERTIES: version=17\n");
    const std::string action =
        "ACTION: VERIFY_JVM\nVERIFY_JVM_FILE: " + text(run.scratch.path("jvm")) +
        "\nVERIFY_CLASSPATH: \"\"\"v\"\"\"\n"
        "VERIFY_CLASS_NAME: Verify\nVERIFY_JVM_HOME: ";
    EXPECT_EQ(printed([&] {
                  EXPECT_EQ(start({"-cv:in", input(action + text(home) + "\n")}), 0);
              }),
              "1\n");
    EXPECT_EQ(run.ui().progress, 100);
    EXPECT_EQ(printed([&] { start({"-cv:in", input(action + "C:\\none\n")}); }), "0\n");
    EXPECT_EQ(run.context().numericVariables[0], 0) << "the script didn't run";
}

TEST_F(InputFileTest, InstallWithoutItsKeysDoesNothing) {
    EXPECT_EQ(start({"-cv:in", input("ACTION: INSTALL_JVM\nINSTALL_JVM_EXE: x\n")}), 0);
    EXPECT_EQ(run.ui().progress, 100);
    EXPECT_EQ(run.ui().messages(), "");
}

TEST_F(InputFileTest, ExtractUnpacksIntoTheCurrentDirectory) {
    const std::filesystem::path former = std::filesystem::current_path();
    std::filesystem::create_directory(run.scratch.native("out"));
    std::filesystem::current_path(run.scratch.native("out"));
    EXPECT_EQ(start({"-cv:extract", "-cv:extract"}), 0);
    EXPECT_EQ(run.context().numericVariables[0], 0);
    EXPECT_EQ(start({"-cv:in", "input.tag"}), 0);
    EXPECT_EQ(run.context().numericVariables[0], 7) << "the same run, from the extracted files";
    std::filesystem::current_path(former);
    EXPECT_EQ(run.scratch.read("out\\input.tag"), "ACTION:  RUN_INSTRUCTIONS\nINSTRUCTIONS:  s\n");
    run.useLauncher(test::launcherBytes(0, {}).substr(0, 7));
    run.ui().take();
    EXPECT_EQ(start({"-cv:extract"}), -1);
    EXPECT_EQ(run.ui().messages(),
              "Unable to load the launcher file index. Invalid launcher format.");
}

}  // namespace
}  // namespace corvane
