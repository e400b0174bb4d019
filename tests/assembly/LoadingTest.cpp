// What a launcher file and an input file are made into.
#include <gtest/gtest.h>

#include "assembly/LauncherFileLoading.h"
#include "instructions/Instructions.h"
#include "jvmsearch/JvmSearch.h"
#include "launch/LaunchScript.h"
#include "launcherfile/LauncherKind.h"
#include "support/Payload.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;

class LoadingTest : public ::testing::Test {
  protected:
    // What the run has: launch script, message, and what the instructions set.
    std::string made() {
        const LauncherFile& files = run.files();
        if (files.instructions != nullptr)
            files.instructions->run();
        return (files.launchScript == nullptr ? "-" : text(files.launchScript->description())) +
               "|" + (files.jvmMessage == nullptr ? "-" : text(files.jvmMessage->message)) + "|" +
               text(runContext().stringVariables[0]);
    }

    void loadInput(const std::string& content) {
        const TagFile tags(run.scratch.write("input", content));
        loadFromInputFile(run.files(), tags);
    }

    const std::vector<test::EmbeddedFile> everything = {
        {FileType::instructions, "one", "INSTRUCTIONS: SET S1 = one\n", 1},
        {FileType::instructions, "two", "INSTRUCTIONS: SET S1 = two\n", 2},
        {FileType::launchScript, "l1", "DESC: first\n", 3},
        {FileType::launchScript, "l2", "DESC: second\n", 4},
        {FileType::jvmMessage, "m1", "MESSAGE: \"hello \"\n", 5},
        {FileType::jvmFile, "j", "DESC: j\n", 6},
        {FileType::classpathFile, "raw", "no tag file", 7},
    };
    test::LauncherRun run;
};

TEST_F(LoadingTest, TheFirstOfItsKindCounts) {
    run.useLauncher(everything);
    loadLauncherFile(run.files(), true);
    EXPECT_EQ(made(), "first|hello |one");
    EXPECT_EQ(run.files().count(), 7);
    EXPECT_NE(run.files().at(1)->tags, nullptr) << "the others are parsed all the same";
    EXPECT_EQ(run.files().at(6)->tags, nullptr);
    EXPECT_EQ(text(run.ui().currentTitle), "Corvane Wizard");
    loadLauncherFile(run.files(), true);
    EXPECT_EQ(run.files().count(), 7) << "a second load does nothing";
}

TEST_F(LoadingTest, WithoutContentsNothingIsParsed) {
    run.useLauncher(everything);
    loadLauncherFile(run.files(), false);
    EXPECT_EQ(run.files().count(), 7);
    loadLauncherFile(run.files(), true);
    EXPECT_EQ(made(), "-|-|");
}

TEST_F(LoadingTest, AnInputFileTakesPrecedence) {
    run.useLauncher(everything);
    const std::string script = text(run.scratch.write("s", "INSTRUCTIONS: SET S1 = mine\n"));
    loadInput("INSTRUCTIONS: " + script + "\nLAUNCHSCRIPT: " +
              text(run.scratch.write("l", "DESC: mine\n")) + "\nJVM: \"\"\nJVMMESSAGE: ignored\n");
    loadLauncherFile(run.files(), true);
    EXPECT_EQ(made(), "mine|hello |mine");
    EXPECT_TRUE(run.files().jvmFilesGiven);
    EXPECT_EQ(run.files().ownedTagFiles.count(), 2);
}

TEST_F(LoadingTest, TheVerificationClassNeedsBothTags) {
    loadInput("VERIFY_CLASSPATH: \"\"\"a.jar\"\"\"\n");
    loadInput("VERIFY_CLASS_NAME: X\n");
    const VerifyClass none = jvmSearchOf(run.files()).getVerifyClass();
    EXPECT_EQ(text(none.classpath + none.name), "");
    loadInput("VERIFY_CLASSPATH: \"\"\"a.jar\"\"\"\nVERIFY_CLASS_NAME: X\n");
    EXPECT_EQ(text(jvmSearchOf(run.files()).getVerifyClass().classpath), "\"a.jar\"");
}

TEST_F(LoadingTest, FailuresNameWhatWasLoaded) {
    run.useLauncher({{FileType::jvmFile, "bad.jvm", "no colon\n", 1}});
    EXPECT_EQ(failureOf([&] { loadLauncherFile(run.files(), true); }),
              "Unable to load the launcher file index. "
              "Syntax error in bad.jvm at line 1 ==> Missing colon at the end of the tag name.");
    EXPECT_FALSE(run.files().indexLoaded);
}

TEST_F(LoadingTest, AnIndexThatRepeatsTheSameBytesIsRefused) {
    const std::string big = "INSTRUCTIONS:\n" + std::string(30000, 'x') + "\n/:\n";
    std::vector<test::EmbeddedFile> files = {{FileType::instructions, "big", big, 1}};
    for (int i = 0; i < 50; ++i)
        files.push_back({FileType::instructions, "again", "", 2 + i});
    std::string bytes = test::launcherBytes(0, files, "");
    // Each of the others names the first one's bytes, too.
    for (std::size_t at = bytes.find("again"); at != std::string::npos;
         at = bytes.find("again", at + 1))
        bytes.replace(at - 10, 8, bytes, big.size() + 4 + 5, 8);
    run.useLauncher(bytes);
    EXPECT_EQ(failureOf([&] { loadLauncherFile(run.files(), true); }),
              "Unable to load the launcher file index. "
              "The embedded tag files overlap. First surplus file: again");
}

TEST_F(LoadingTest, ATrailerThatIsNotLastIsFoundOnceItWasLookedFor) {
    run.useLauncher(test::launcherBytes(0, everything) + std::string(100, 'x'));
    loadLauncherFile(run.files(), true);
    EXPECT_EQ(run.files().count(), 0);
    run.useLauncher(test::launcherBytes(0, everything) + std::string(100, 'x'));
    launcherKind(run.context().launcherPath.cstr());
    loadLauncherFile(run.files(), true);
    EXPECT_EQ(run.files().count(), 7);
}

}  // namespace
}  // namespace corvane
