// What the commands for a launch do.
#include <gtest/gtest.h>

#include "instructions/Actions.h"
#include "instructions/ScriptRun.h"
#include "launch/LaunchScript.h"
#include "platform/Platform.h"
#include "support/JavaHome.h"

namespace corvane {
namespace {

using test::text;
using Calls = std::vector<std::string>;

class ActionsTest : public ::testing::Test {
  protected:
    ActionsTest() {
        script.setValue("COMMAND", "\"@JVM_HOME@\\bin\\java.exe\" x");
        jvmTags.setValue("JVM_HOME", test::makeJavaHome(run.scratch, "jdk"));
        jvmTags.write(run.scratch.path("resolved"));
    }

    void useLaunchScript() { run.files().launchScript = makeOwned<LaunchScript>(script, true); }

    test::ScriptRun run;
    TagFile script;
    TagFile jvmTags;
};

TEST_F(ActionsTest, LaunchRunsTheResolvedFileAndGivesItsExitValue) {
    EXPECT_EQ(run.runScript("LAUNCH none 0"), "-1") << "there is no launch script";
    useLaunchScript();
    for (const char* argument : {"--exit", "3", "y"})
        run.context().passThroughArgs.add(argument);
    VariableTable().setStringValue(2, run.scratch.path("resolved"));
    EXPECT_EQ(run.runScript("LAUNCH @S2@ 5"), "3");
    EXPECT_EQ(text(run.context().childStdOut), "[x][y]");
    EXPECT_EQ(run.ui().take(), (Calls{"setStatus Running ...", "hide 5"}));
    EXPECT_EQ(run.runScript("LAUNCH @S2@ 0\nILAUNCH 1 0"), "-1") << "the last launch decides";
    EXPECT_EQ(run.ui().take(), Calls{"hide 0"});
}

TEST_F(ActionsTest, AMessageWithALinkStandsForAnInstallerThatIsNotThere) {
    TagFile message;
    message.setValue("MESSAGE", "Get Java.");
    const auto failure = [&] {
        run.files().jvmMessage = std::make_unique<JvmMessage>(message);
        return test::failureOf([] { installJvm(InstallMode::hidden); });
    };
    EXPECT_EQ(failure(), "No JVM installer was included in the launcher.") << "no opt-in";
    message.setValue("LINK", "https://example.org");
    EXPECT_EQ(failure(), "Get Java.");
    run.context().cancelRequested.request();
    EXPECT_EQ(failure(), "Canceled by the user.");
}

TEST_F(ActionsTest, InternalLaunchTakesAnEmbeddedJvmFile) {
    const std::string missing =
        "ERROR: Unable to launch the internal launch script with the internal JVM file. Either "
        "the launch script or the JVM file is missing from the launcher.\n";
    run.useLauncher({{FileType::classpathFile, "a.jar", "x", 1}, {FileType::jvmFile, "j", "x", 2}});
    const StreamGuard stream(openStream(run.context().launcherPath.cstr(), "rb"));
    run.files().readIndex(stream.get(), 0);
    EXPECT_EQ(internalLaunch(2, 0), -1) << "no script";
    useLaunchScript();
    run.files().at(0)->tags = std::make_unique<TagFile>(run.scratch.path("resolved"));
    EXPECT_EQ(internalLaunch(1, 0), -1) << "another type";
    EXPECT_EQ(internalLaunch(9, 0), -1) << "no entry";
    EXPECT_EQ(internalLaunch(2, 0), -1) << "no tags";
    EXPECT_TRUE(run.log().ends_with(missing + missing + missing + missing)) << run.log();
    run.files().at(1)->tags = std::make_unique<TagFile>(run.scratch.path("resolved"));
    EXPECT_EQ(internalLaunch(2, 0), 0);
    EXPECT_EQ(text(run.context().childStdOut), "[x]");
}

TEST_F(ActionsTest, AnEmbeddedLauncherThatCanNotBeExtractedLeavesItsDirectoryToTheCleanup) {
    run.useLauncher({{FileType::embeddedLauncher, "no\\a.exe", "x", 1}});
    const StreamGuard stream(openStream(run.context().launcherPath.cstr(), "rb"));
    run.files().readIndex(stream.get(), 0);
    EXPECT_THROW(executeLauncher(0), LauncherException);
    EXPECT_EQ(run.context().tempDirs.count(), 1);
}

}  // namespace
}  // namespace corvane
