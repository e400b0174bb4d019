// From a launch script and a JVM to a running child.
#include <gtest/gtest.h>

#include "host/Environment.h"
#include "launch/LaunchRun.h"
#include "support/JavaHome.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;

class ExecutionTest : public ::testing::Test {
  protected:
    ExecutionTest() {
        run.jvmTags.setValue("JVM_HOME", test::makeJavaHome(run.scratch, "j d%k"));
        for (const char* name : {"A", "B", "C"})
            setEnvironmentValue(name, "unchanged");
    }
    ~ExecutionTest() override { setEnvironmentValue("JAVA_HOME", formerJavaHome); }

    std::uint32_t execute(const std::string& arguments, const StringList* extra = nullptr,
                          bool console = false) {
        LaunchScript script(commandStart + arguments.c_str(), true, false);
        const std::uint32_t code = script.execute(run.jvmFile, extra, console);
        out = text(script.stdOut());
        err = text(script.errOut());
        return code;
    }

    const String commandStart = "\"@JVM_HOME@\\@JVM_EXE@\" ";
    const String formerJavaHome = getEnvironmentValue("JAVA_HOME");
    test::LaunchRun run;
    std::string out;
    std::string err;
};

TEST_F(ExecutionTest, OutputArgumentsAndExitValue) {
    StringList extra;
    for (const char* argument : {"--exit", "3", "--err", "oops", "a\"b", "", "c d"})
        extra.add(argument);
    EXPECT_EQ(execute("Main", &extra), 3u);
    EXPECT_EQ(out, "[Main][a\"b][][c d]");
    EXPECT_EQ(err, "oops");
    const std::string log = run.log();
    EXPECT_NE(log.find("j d%k\\bin\\java.exe\" Main \"--exit\" \"3\" \"--err\" \"oops\" "
                       "\"a\\\"b\" \"\" \"c d\" in working directory " +
                       text(run.scratch.path()) + "\n"),
              std::string::npos)
        << log;
    EXPECT_NE(
        log.find("Output from the launch script execution\nStdOut:\n" + out + "\nErrOut:\noops\n"),
        std::string::npos);
}

TEST_F(ExecutionTest, ASecondRunBuildsTheSameCommandAndAppends) {
    LaunchScript script(commandStart + "x", true, false);
    script.execute(run.jvmFile, nullptr, false);
    script.execute(run.jvmFile, nullptr, false);
    EXPECT_EQ(text(script.stdOut()), "[x][x]");
}

TEST_F(ExecutionTest, TheHomeGoesInFrontOfAnyTemplate) {
    run.jvmTags.setValue("JVM_HOME", "Z:\\no such jdk");
    LaunchScript script("java Main", true, false);
    EXPECT_EQ(failureOf([&] {
                  script.execute(run.jvmFile, nullptr, false);
              }).find("CreateProcess failed  ==>  "),
              0u);
    EXPECT_NE(run.log().find("command: \"Z:\\no such jdkjava Main in working"), std::string::npos);
    LaunchScript empty("", true, false);
    EXPECT_EQ(failureOf([&] { empty.execute(run.jvmFile, nullptr, false); }),
              "Launch script error: The COMMAND tag is missing or empty.");
}

TEST_F(ExecutionTest, WithAConsoleNothingIsCollected) {
    EXPECT_EQ(execute("--exit 4 x", nullptr, true), 4u);
    EXPECT_EQ(out, "");
    TagFile tags;
    tags.setValue("COMMAND", commandStart + "x");
    tags.setValue("DISPLAY_CONSOLE", "1");
    LaunchScript script(tags, true);
    script.execute(run.jvmFile, nullptr, false);
    EXPECT_EQ(text(script.stdOut()), "");
    EXPECT_EQ(run.log().find("Output from"), std::string::npos);
}

TEST_F(ExecutionTest, TheWorkingDirectoryIsTheLaunchersUnlessTheScriptSaysNo) {
    run.context().originalLauncherPath = "C:\\elsewhere\\setup.exe";
    TagFile tags;
    tags.setValue("COMMAND", commandStart + "--touch here x");
    LaunchScript(tags, true).execute(run.jvmFile, nullptr, false);
    EXPECT_TRUE(run.scratch.exists("here"));
    tags.setValue("COMMAND", commandStart + "x");
    tags.setValue("AUTO_SET_WORKING_DIR", "0");
    LaunchScript(tags, true).execute(run.jvmFile, nullptr, false);
    EXPECT_NE(run.log().find(" x in current working directory\n"), std::string::npos);
}

TEST_F(ExecutionTest, JavaHomeIsTheJvmsForTheChildAlone) {
    setEnvironmentValue("JAVA_HOME", "before");
    execute("--env JAVA_HOME x");
    EXPECT_NE(out.find("j d%k}"), std::string::npos) << out;
    EXPECT_EQ(text(getEnvironmentValue("JAVA_HOME")), "before");
}

TEST_F(ExecutionTest, AFailureLeavesJavaHomeAsItIsThen) {
    setEnvironmentValue("JAVA_HOME", "before");
    LaunchScript faulty(commandStart + "%NONE%()", true, false);
    EXPECT_EQ(failureOf([&] { faulty.execute(run.jvmFile, nullptr, false); }),
              "Launch script error: Invalid function name (NONE).");
    EXPECT_EQ(text(getEnvironmentValue("JAVA_HOME")), "before") << "nothing was prepared";
    run.jvmTags.setValue("JVM_HOME", "Z:\\no such jdk");
    failureOf([&] { execute("x"); });
    EXPECT_EQ(text(getEnvironmentValue("JAVA_HOME")), "Z:\\no such jdk");
}

TEST_F(ExecutionTest, AWizardsSettingsReachTheChildAndStay) {
    for (const char* setting : {" A = 1=2 ", "B=", "C", "  ", "JAVA_HOME=mine"})
        run.jvmTags.addValue("SET_ENV_FOR_WIZARD", setting);
    execute("--env A --env B --env C --env JAVA_HOME x");
    EXPECT_EQ(out.find("{1=2}{"), 0u) << out;
    EXPECT_NE(out.find("{mine}"), std::string::npos) << out;
    EXPECT_EQ(text(getEnvironmentValue("A")), "1=2");
    EXPECT_EQ(text(getEnvironmentValue("B")), "");
    EXPECT_EQ(text(getEnvironmentValue("C")), "");

    setEnvironmentValue("A", "unchanged");
    run.useLauncher(test::launcherBytes(1, {}));
    execute("--env A x");
    EXPECT_EQ(out, "{unchanged}[x]");
}

}  // namespace
}  // namespace corvane
