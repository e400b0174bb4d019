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

    std::uint32_t execute(const std::string& arguments, const StringList* extra = nullptr) {
        LaunchScript script(commandStart + arguments.c_str(), true, false);
        const std::uint32_t code = script.execute(run.jvmFile, extra, false);
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
                       "\"a\\\"b\" \"\" \"c d\" in working directory "),
              std::string::npos)
        << log;
}

TEST_F(ExecutionTest, ExactArgumentsArriveAsTheyWereTyped) {
    TagFile tags;
    tags.setValue("COMMAND", commandStart + "x");
    tags.setValue("EXACT_ARGS", "1");
    StringList extra;
    std::string expected = "[x]";
    for (const char* argument :
         {"C:\\my dir\\", "b", "a\"b", "\\\"", "\\\\srv\\x", "\\", "", "%PATH%"}) {
        extra.add(argument);
        expected += "[" + std::string(argument) + "]";
    }
    LaunchScript script(tags, true);
    script.execute(run.jvmFile, &extra, false);
    EXPECT_EQ(text(script.stdOut()), expected);
}

TEST_F(ExecutionTest, TheHomeGoesInFrontOfAnyTemplate) {
    run.jvmTags.setValue("JVM_HOME", "Z:\\no such jdk");
    LaunchScript script("java Main", true, false);
    failureOf([&] { script.execute(run.jvmFile, nullptr, false); });
    EXPECT_NE(run.log().find("command: \"Z:\\no such jdkjava Main in working"), std::string::npos);
    LaunchScript empty("", true, false);
    EXPECT_EQ(failureOf([&] { empty.execute(run.jvmFile, nullptr, false); }),
              "Launch script error: The COMMAND tag is missing or empty.");
}

TEST_F(ExecutionTest, ConsoleAndDirectoryAreTheScripts) {
    const struct {
        const char* console;
        const char* directory;
        const char* out;
        const char* logged;
    } cases[] = {{"", "", "[x]", " in working directory "},
                 {"2", "0", "", " in current working directory\n"},
                 {"yes", "no", "[x]", " in working directory "},
                 {"0", "1", "[x]", " in working directory "}};
    for (const auto& [console, directory, collected, logged] : cases) {
        TagFile tags;
        tags.setValue("COMMAND", commandStart + "x");
        tags.setValue("DISPLAY_CONSOLE", console);
        tags.setValue("AUTO_SET_WORKING_DIR", directory);
        LaunchScript script(tags, true);
        const std::size_t former = run.log().size();
        script.execute(run.jvmFile, nullptr, false);
        EXPECT_EQ(text(script.stdOut()), collected) << console;
        EXPECT_NE(run.log().find(logged, former), std::string::npos) << directory;
    }
}

TEST_F(ExecutionTest, ACommandOfTheHomeAloneRunsAgainAndAgain) {
    run.jvmTags.setValue("JVM_HOME", run.jvmTags.value("JVM_HOME", 0) + "\\bin\\java.exe\" x");
    LaunchScript script("\"@JVM_HOME@", true, false);
    for (const char* collected : {"[x]", "[x][x]"}) {
        EXPECT_EQ(script.execute(run.jvmFile, nullptr, false), 0u);
        EXPECT_EQ(text(script.stdOut()), collected);
    }
}

TEST_F(ExecutionTest, JavaHomeIsTheJvmsForTheChildAlone) {
    setEnvironmentValue("JAVA_HOME", "before");
    execute("--env JAVA_HOME x");
    EXPECT_NE(out.find("j d%k}"), std::string::npos) << out;
    EXPECT_EQ(text(getEnvironmentValue("JAVA_HOME")), "before");
    failureOf([&] { execute("%NONE%()"); });
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
}

}  // namespace
}  // namespace corvane
