// What the commands do: launches, the carried JVM, the embedded launcher.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "instructions/Actions.h"
#include "instructions/ScriptRun.h"
#include "launch/LaunchScript.h"
#include "platform/Platform.h"
#include "support/JavaHome.h"
#include "support/Wait.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;
using Calls = std::vector<std::string>;

class ActionsTest : public ::testing::Test {
  protected:
    ActionsTest() {
        script.setValue("COMMAND", "\"@JVM_HOME@\\bin\\java.exe\" x");
        home = test::makeJavaHome(run.scratch, "jdk");
        jvmTags.setValue("JVM_HOME", home);
        jvmTags.write(run.scratch.path("resolved"));
    }

    void useLaunchScript() { run.files().launchScript = makeOwned<LaunchScript>(script, true); }

    void embed(const std::vector<test::EmbeddedFile>& embedded) {
        run.useLauncher(embedded);
        const StreamGuard stream(openStream(run.context().launcherPath.cstr(), "rb"));
        run.files().readIndex(stream.get(), 0);
    }

    // The bytes of the test program, which serves as installer and embedded launcher.
    std::string program() {
        test::copyTestJava(run.scratch, "program");
        std::ifstream stream(run.scratch.native("program"), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    test::ScriptRun run;
    TagFile script;
    TagFile jvmTags;
    String home;
};

TEST_F(ActionsTest, LaunchRunsTheResolvedFileAndGivesItsExitValue) {
    EXPECT_EQ(run.runScript("LAUNCH none 0"), "-1") << "there is no launch script";
    useLaunchScript();
    for (const char* argument : {"--exit", "3", "--err", "oops", "y"})
        run.context().passThroughArgs.add(argument);
    VariableTable().setStringValue(2, run.scratch.path("resolved"));
    EXPECT_EQ(run.runScript("LAUNCH @S2@ 5"), "3");
    EXPECT_EQ(text(run.context().childStdOut), "[x][y]");
    EXPECT_EQ(text(run.context().childStdErr), "oops");
    EXPECT_EQ(run.ui().take(), (Calls{"setStatus Running ...", "hide 5"}));
    EXPECT_EQ(run.runScript("LAUNCH @S2@ 0\nILAUNCH 1 0"), "-1") << "the last launch decides";
    EXPECT_EQ(run.ui().take(), Calls{"hide 0"});
    EXPECT_EQ(run.runScript("LAUNCH \"no file\" 0"), "Unable to load input file: no file");
}

TEST_F(ActionsTest, InternalLaunchTakesAnEmbeddedJvmFile) {
    const std::string missing =
        "ERROR: Unable to launch the internal launch script with the internal JVM file. Either "
        "the launch script or the JVM file is missing from the launcher.\n";
    embed({{FileType::classpathFile, "a.jar", "x", 1}, {FileType::jvmFile, "j.jvm", "x", 2}});
    EXPECT_EQ(internalLaunch(2, 0), -1) << "no script";
    useLaunchScript();
    EXPECT_EQ(internalLaunch(1, 0), -1) << "another type";
    EXPECT_EQ(internalLaunch(9, 0), -1) << "no entry";
    EXPECT_EQ(internalLaunch(2, 0), -1) << "no tags";
    const std::string log = run.log();
    EXPECT_EQ(log.substr(log.size() - 4 * missing.size()), missing + missing + missing + missing);
    run.files().at(1)->tags = std::make_unique<TagFile>(run.scratch.path("resolved"));
    EXPECT_EQ(internalLaunch(2, 0), 0);
    EXPECT_EQ(text(run.context().childStdOut), "[x]");
}

TEST_F(ActionsTest, InitializeUi) {
    run.ui().currentTitle = "T";
    EXPECT_EQ(run.runScript("INITIALIZE_UI trailing words"), "0");
    EXPECT_EQ(run.ui().take(), (Calls{"setStatus Initializing T...", "show"}));
}

TEST_F(ActionsTest, AJvmInstallerMustLeaveItsFile) {
    EXPECT_EQ(run.runScript("INSTALL_JVM 0"), "No JVM installer was included in the launcher.");
    EXPECT_EQ(run.ui().take(), Calls{"hide 0"});

    embed({{FileType::jvmInstaller, "inst.exe", program(), 1}});
    VariableTable().setStringValue(1, "old");
    EXPECT_EQ(run.runScript("INSTALL_JVM 1"), "0");
    EXPECT_EQ(run.n(1), 0);
    EXPECT_EQ(run.s(1), "");
    EXPECT_NE(run.log().find("ERROR: Invalid bundled JVM. Missing 'jvm' file.\n"),
              std::string::npos);
    EXPECT_EQ(run.ui().take(), (Calls{"show", "setStatus Preparing Java(tm) Virtual Machine..."}));
    EXPECT_EQ(run.scratch.read(
                  text(run.context().tempDirs.last().substr(run.scratch.path().length() + 1)) +
                  "\\inst.exe"),
              "")
        << "the installer is gone";
}

TEST_F(ActionsTest, AJvmMayGoToADirectoryOfTheUsersChoice) {
    embed({{FileType::jvmInstaller, "inst.exe", program(), 1}});
    EXPECT_EQ(run.runScript("INSTALL_JVM 2"), "0");
    EXPECT_EQ(run.n(1), 0) << "the choice was cancelled";
    EXPECT_EQ(run.scratch.exists("inst.exe"), false);

    run.scratch.write("chosen\\jvm", "DESC: carried\n");
    run.ui().chosenDirectory = run.scratch.path("chosen");
    EXPECT_EQ(run.runScript("INSTALL_JVM 2"), "0");
    EXPECT_EQ(run.n(1), 1);
    EXPECT_EQ(run.s(1), text(run.scratch.path("chosen\\jvm")));
    const TagFile tags(run.scratch.path("chosen\\jvm"));
    EXPECT_EQ(text(tags.value("JVM_HOME", 0)), text(run.scratch.path("chosen")));
    EXPECT_EQ(text(tags.value("JVM_FILE", 0)), text(run.scratch.path("chosen\\jvm")));
    EXPECT_EQ(text(tags.value("JVM_TEMP", 0)), "1");
    EXPECT_EQ(text(tags.value("DESC", 0)), "carried");
    EXPECT_FALSE(run.scratch.exists("chosen\\inst.exe"));
}

TEST_F(ActionsTest, TheInstallActionPrintsTheFile) {
    const String installer = test::copyTestJava(run.scratch, "i.exe");
    EXPECT_EQ(failureOf([&] { installJvmAction(false, true, installer, run.scratch.path()); }),
              "Unable to load input file: " + text(run.scratch.path("jvm")));
    run.scratch.write("jvm", "DESC: d\n");
    ::testing::internal::CaptureStdout();
    installJvmAction(false, false, installer, run.scratch.path());
    std::string out = ::testing::internal::GetCapturedStdout();
    std::erase(out, '\r');
    EXPECT_EQ(out, text(run.scratch.path("jvm")) + "\n");
    EXPECT_EQ(text(TagFile(run.scratch.path("jvm")).value("JVM_TEMP", 0)), "0");
}

TEST_F(ActionsTest, AnEmbeddedLauncherGetsTheArgumentsAndOwnsItsDirectory) {
    embed({{FileType::classpathFile, "a.jar", "x", 2},
           {FileType::embeddedLauncher, "inner.exe", program(), 7}});
    for (const char* position : {"0", "7", "-1"})
        EXPECT_EQ(run.runScript("EXECUTE_LAUNCHER " + std::string(position)), "0");
    EXPECT_NE(run.log().find("ERROR: Unable to execute the embedded launcher.\nERROR: "
                             "Unable to execute the embedded launcher.\n"),
              std::string::npos);

    run.context().originalArgs.add("--touch");
    run.context().originalArgs.add("started here");
    run.context().originalArgs.add("last");
    EXPECT_EQ(run.runScript("EXECUTE_LAUNCHER 1"), "0");
    EXPECT_EQ(run.context().tempDirs.count(), 0);
    const auto started = [&] {
        const auto names = run.scratch.list();
        return std::any_of(names.begin(), names.end(), [](const std::string& name) {
            return name.starts_with("temp\\LRE") && name.ends_with("\\started here");
        });
    };
    EXPECT_TRUE(test::waitFor(started)) << ::testing::PrintToString(run.scratch.list());
}

}  // namespace
}  // namespace corvane
