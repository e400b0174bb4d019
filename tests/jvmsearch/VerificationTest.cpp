// The verification of one candidate.
#include <gtest/gtest.h>

#include <algorithm>

#include "base/Messages.h"
#include "foundation/TextLines.h"
#include "host/Environment.h"
#include "jvmsearch/SearchRun.h"
#include "platform/Platform.h"

namespace corvane {
namespace {

using test::text;

class VerificationTest : public ::testing::Test {
  protected:
    VerificationTest() { test::SearchRun::describe(tags, "Java 17", "17..."); }

    // Whether a home passes; `name` lies in the scratch directory.
    bool accepts(const String& home) {
        const auto match = verifyHome(file, home, verifyClass);
        EXPECT_TRUE(match == nullptr || match->home() == home);
        return match != nullptr;
    }

    test::SearchRun run;
    TagFile tags;
    JvmFile file{tags};
    VerifyClass verifyClass = run.search().getVerifyClass();
};

TEST_F(VerificationTest, TheCommandLineNamesClassAndProperties) {
    tags.addValue("JVM_PROPERTIES", "no equals sign");
    tags.addValue("JVM_PROPERTIES", " a.b = c=d ");
    tags.setValue("REQ_JAVA_ARGS", "-Xint");
    EXPECT_TRUE(accepts(run.home("h%o@me", "17\na.b=c=d")));
    EXPECT_NE(run.log().find("h%o@me\\bin\\java.exe\"  -cp \"\";\"verify.jar\";\"\"  -Xint "
                             "Verify version a.b in working directory"),
              std::string::npos)
        << run.log();
    EXPECT_EQ(run.logged("WARNING"),
              "|WARNING: Invalid JVM_PROPERTIES setting (no equals sign) in JVM File ");
    tags.addValue("JVM_PROPERTIES", "c >=new");
    EXPECT_FALSE(accepts(run.home("other", "17")));
    EXPECT_NE(run.log().find("setting (c >=new)"), std::string::npos);
    verifyClass.classpath = "\"a\";b";
    EXPECT_NE(text(verificationCommand(verifyClass)).find("(\"a\";b)"), std::string::npos)
        << "quotes around a part";
}

TEST_F(VerificationTest, WhatIsNotThereCostsNoProcess) {
    EXPECT_FALSE(accepts(run.scratch.path("none")));
    const std::string once = "|Verifying JVM at " + text(run.scratch.path("none\\bin\\java.exe"));
    EXPECT_EQ(run.logged("Verifying"), once);
    EXPECT_FALSE(accepts(""));
    tags.setValue("JVM_EXE", "");
    EXPECT_FALSE(accepts(run.scratch.path("none")));
    EXPECT_EQ(run.logged("Verifying"), once) << "without a home or an executable nothing is said";
}

TEST_F(VerificationTest, ALimitRefusesWhatWouldHoldTheSearchUp) {
    const String exe = run.scratch.path("text\\bin\\java.exe");
    String words = systemErrorText(ERROR_BAD_EXE_FORMAT, exe);
    trim(words);
    run.scratch.write("text\\bin\\java.exe", "certainly no program, but text\n");
    makeExecutable(exe.cstr());
    const struct {
        String home;
        String logged;
    } cases[] = {
        {run.home("hangs", "17\nhang"), "was ended, since it gave no answer within 1 second"},
        {run.home("endless", "17\nendless"), "was ended, since it wrote more than 1 MB"},
        {run.scratch.path("text"),
         exe + " could not be started: CreateProcess failed  ==>  " + words},
        {run.home("crash", "17\ncrash"), "ERROR: Invalid magic value: "},
    };
    // The others have time, however busy the machine is.
    tags.setValue("VERIFY_SECONDS", "1");
    for (const auto& [home, logged] : cases) {
        EXPECT_FALSE(accepts(home)) << home.cstr();
        EXPECT_NE(run.log().find(logged.cstr()), std::string::npos) << logged.cstr();
        tags.setValue("VERIFY_SECONDS", "60");
    }
    for (const char* const wrong : {"-1", "0", "soon"}) {
        tags.setValue("VERIFY_SECONDS", wrong);
        EXPECT_TRUE(accepts(run.home(wrong, "17.0.2")));
        EXPECT_NE(run.log().find(std::string("WARNING: Invalid VERIFY_SECONDS setting (") + wrong),
                  std::string::npos);
    }
}

TEST_F(VerificationTest, WithALimitAHomeIsStartedOnceForEachQuestion) {
    const String homes[] = {run.home("good", "17.0.1"), run.home("dumb", "17\nsilent")};
    tags.setValue("VERIFY_SECONDS", "60");
    tags.setValue("JVM_PROPERTIES", "version=21...");
    const auto starts = [&] {
        const std::string lines = run.logged("Executing launch script command");
        return std::count(lines.begin(), lines.end(), '|');
    };
    EXPECT_FALSE(accepts(homes[0]));
    tags.setValue("JVM_PROPERTIES", "version=17...");
    EXPECT_TRUE(accepts(homes[0]));
    EXPECT_EQ(starts(), 1) << "the same question";
    tags.addValue("JVM_PROPERTIES", "other=");
    EXPECT_TRUE(accepts(homes[0]));
    EXPECT_EQ(starts(), 2) << "another question";
    EXPECT_FALSE(accepts(homes[1]));
    tags.setValue("JVM_PROPERTIES", "version=17...");
    EXPECT_FALSE(accepts(homes[1]));
    EXPECT_EQ(starts(), 3) << "whoever gave no report isn't asked anything else";
    tags.setValue("REQ_JAVA_ARGS", "-x");
    EXPECT_FALSE(accepts(homes[1]));
    EXPECT_EQ(starts(), 4) << "started in another way";
}

TEST_F(VerificationTest, OptionsInTheEnvironmentAreBlamed) {
    tags.setValue("VERIFY_SECONDS", "60");
    setEnvironmentValue("JAVA_TOOL_OPTIONS", "-Dx");
    EXPECT_TRUE(accepts(run.home("any", "17")));
    EXPECT_FALSE(accepts(run.home("particular", "17\nparticular")));
    EXPECT_EQ(text(getEnvironmentValue("JAVA_TOOL_OPTIONS")), "-Dx");
    EXPECT_FALSE(accepts(run.home("crash", "17\ncrash")));
    SetEnvironmentVariableA("JAVA_TOOL_OPTIONS", nullptr);
    EXPECT_NE(
        run.log().find("particular\\bin\\java.exe fails only because of JAVA_TOOL_OPTIONS=-Dx "
                       "in the environment."),
        std::string::npos);
    EXPECT_EQ(run.log().find("crash\\bin\\java.exe fails only"), std::string::npos);
}

TEST_F(VerificationTest, OutputAgainstProperties) {
    const struct {
        const char* output;
        std::vector<const char*> properties;
        bool matches;
    } cases[] = {
        {"", {}, false},
        {"1739021872", {"a=1"}, true},
        {"noise\n 1739021872 \r\n1.3.1\n", {"a=1.3..."}, true},
        {"1739021872\n1.3\n", {"a=1.3..."}, true},
        {"1739021872\n1.4.0\n", {"a=1.3..."}, false},
        {"1739021872\n1\n", {"a=1.3..."}, false},
        {"1739021872\n1...3\n", {"a=1...3"}, true},
        {"1739021872\n1x..3\n", {"a=1...3"}, false},
        {"1739021872\n\n2\n", {"a=", "b=2"}, true},
        {"1739021872\nx\n", {"a="}, false},
        {"1739021872\n1\n", {"a=1", "b=never compared"}, true},
        {"1739021872\n1\n2\n3\n", {"a=1", "b=2"}, true},
        {"1739021872\nABC\n", {"a=abc"}, false},
        {"1739021872\n  padded \n", {"a=padded"}, true},
        {"1739021872\n17.0.10\n21\n", {"a>=17.0.9", "b<=21"}, true},
        {"1739021872\n17.0.10\n25\n", {"a>=17.0.9", "b<=21"}, false},
        {"1739021872\n\n", {"a>=0"}, false},
        {"1739021872\n17\n", {"a>=new"}, false},
    };
    for (const auto& [output, wanted, matches] : cases) {
        JvmPropertyList properties;
        for (const char* const line : wanted)
            properties.add(parseProperty(line));
        EXPECT_EQ(matchProperties(output, properties), matches) << output;
    }
}

TEST_F(VerificationTest, TheEmbeddedClassIsExtractedOnce) {
    test::LauncherRun other;
    other.useLauncher({{FileType::verifyClass, "old.jar", "1", 1},
                       {FileType::verifyClass, "verify.jar", "2", 2}});
    const StreamGuard stream(openStream(other.context().launcherPath.cstr(), "rb"));
    other.files().readIndex(stream.get(), 0);
    JvmSearch search;
    const VerifyClass first = search.getVerifyClass();
    EXPECT_EQ(text(first.name), "\"Verify\"");
    EXPECT_EQ(first.classpath.rfind("\\verify.jar\""), first.classpath.length() - 12);
    EXPECT_EQ(text(search.getVerifyClass().classpath), text(first.classpath));
    EXPECT_EQ(other.context().tempDirs.count(), 2);
    JvmSearch given;
    given.setVerifyClass("", "Mine");
    EXPECT_EQ(text(given.getVerifyClass().classpath), "");
}

}  // namespace
}  // namespace corvane
