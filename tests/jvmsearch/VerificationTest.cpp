// The verification of one candidate.
#include <gtest/gtest.h>

#include "app/base/Status.h"
#include "jvmsearch/SearchRun.h"
#include "platform/Platform.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;

class VerificationTest : public ::testing::Test {
  protected:
    VerificationTest() { test::SearchRun::describe(tags, "Java 17", "17..."); }

    // Whether a home passes; `name` lies in the scratch directory.
    bool accepts(const String& home) {
        const auto match = file.verifyHome(home, verifyClass);
        EXPECT_TRUE(match == nullptr || match->home() == home);
        return match != nullptr;
    }

    test::SearchRun run;
    TagFile tags;
    JvmFile file{tags};
    VerifyClass verifyClass = run.search().getVerifyClass();
};

TEST_F(VerificationTest, AcceptsAndRefusesByRunning) {
    EXPECT_TRUE(accepts(run.home("right one", "17.0.2")));
    EXPECT_FALSE(accepts(run.home("other", "21")));
    EXPECT_FALSE(accepts(test::makeJavaHome(run.scratch, "crash", "crash\n")));
    EXPECT_FALSE(accepts(test::makeJavaHome(run.scratch, "silent", "silent\n")));
    EXPECT_TRUE(accepts(test::makeJavaHome(run.scratch, "flood", "flood\nversion=17\n")));
    EXPECT_EQ(run.logged("ERROR: Invalid magic value: "),
              "|ERROR: Invalid magic value: |ERROR: Invalid magic value: ");
    EXPECT_NE(run.log().find("Found matching JVM at " + text(run.scratch.path("right one"))),
              std::string::npos);
    EXPECT_EQ(text(tags.value("JVM_HOME", 0)), text(run.scratch.path("flood")))
        << "the last candidate stays in the tags";
}

TEST_F(VerificationTest, TheCommandLineNamesClassAndProperties) {
    tags.addValue("JVM_PROPERTIES", "no equals sign");
    tags.addValue("JVM_PROPERTIES", " a.b = c=d ");
    tags.setValue("REQ_JAVA_ARGS", "-Xint");
    EXPECT_FALSE(accepts(run.home("h%o@me", "17")));
    EXPECT_GE(run.ui().steps, 1 + 6) << "for what was read, and for the verification";
    EXPECT_NE(run.log().find("h%o@me\\bin\\java.exe\"  -cp \"\";\"verify.jar\";\"\"  -Xint "
                             "Verify version a.b in working directory"),
              std::string::npos)
        << run.log();
    EXPECT_NE(run.log().find("WARNING: Invalid JVM_PROPERTIES setting (no equals sign) in JVM "
                             "File \n"),
              std::string::npos);
}

TEST_F(VerificationTest, WhatIsNotThereCostsNoProcess) {
    EXPECT_FALSE(accepts(run.scratch.path("none")));
    EXPECT_EQ(run.ui().steps, 2);
    const std::string path = text(run.scratch.path("none")) + "\\bin\\java.exe";
    EXPECT_EQ(run.log(), "------------------\nVerifying JVM at " + path +
                             "\n   for JVM: Java 17\n" + path + " does not exist\n");
    EXPECT_FALSE(accepts(""));
    tags.setValue("JVM_EXE", "");
    EXPECT_FALSE(accepts(run.scratch.path("none")));
    EXPECT_EQ(run.logged("Verifying"), "|Verifying JVM at " + path);
    std::filesystem::create_directories(run.scratch.native("dir\\bin\\java.exe"));
    tags.setValue("JVM_EXE", "bin\\java.exe");
    EXPECT_FALSE(accepts(run.scratch.path("dir"))) << "a directory is no executable";
}

TEST_F(VerificationTest, WhatCannotBeStartedEndsTheSearch) {
    run.scratch.write("text\\bin\\java.exe", "this is no program\n");
    std::filesystem::permissions(run.scratch.native("text\\bin\\java.exe"),
                                 std::filesystem::perms::all);
    setDetail(Detail::searchingFor, "outer");
    EXPECT_EQ(
        failureOf([&] { accepts(run.scratch.path("text")); }).find("CreateProcess failed  ==>  "),
        0u);
    EXPECT_EQ(text(currentStatus().text), "outer") << "the status is put back all the same";
}

TEST_F(VerificationTest, OutputAgainstProperties) {
    const struct {
        const char* output;
        std::vector<std::pair<const char*, const char*>> properties;
        bool matches;
    } cases[] = {
        {"", {}, false},
        {"no magic\n", {}, false},
        {"1739021872", {{"a", "1"}}, true},
        {"noise\n 1739021872 \r\n1.3.1\n", {{"a", "1.3..."}}, true},
        {"1739021872\n1.3\n", {{"a", "1.3..."}}, true},
        {"1739021872\n1.4.0\n", {{"a", "1.3..."}}, false},
        {"1739021872\n1\n", {{"a", "1.3..."}}, false},
        {"1739021872\nanything\n", {{"a", "..."}}, true},
        {"1739021872\n1...3\n", {{"a", "1...3"}}, true},
        {"1739021872\n1x..3\n", {{"a", "1...3"}}, false},
        {"1739021872\n\n2\n", {{"a", ""}, {"b", "2"}}, true},
        {"1739021872\nx\n", {{"a", ""}}, false},
        {"1739021872\n1\n", {{"a", "1"}, {"b", "never compared"}}, true},
        {"1739021872\n1\n2\n3\n", {{"a", "1"}, {"b", "2"}}, true},
        {"1739021872\nABC\n", {{"a", "abc"}}, false},
        {"1739021872\n  padded \n", {{"a", "padded"}}, true},
        {"x1739021872\n", {}, false},
    };
    for (const auto& [output, wanted, matches] : cases) {
        JvmPropertyList properties;
        for (const auto& [name, pattern] : wanted)
            properties.add(std::make_unique<JvmProperty>(JvmProperty{name, pattern}));
        EXPECT_EQ(file.matchProperties(output, properties), matches) << output;
    }
    EXPECT_NE(run.log().find("ERROR: Invalid magic value: no magic\n\n"), std::string::npos);
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
    EXPECT_EQ(*first.classpath.charAt(0), '"');
    EXPECT_EQ(first.classpath.rfind("\\verify.jar\""), first.classpath.length() - 12);
    EXPECT_EQ(text(search.getVerifyClass().classpath), text(first.classpath));
    EXPECT_EQ(other.context().tempDirs.count(), 2);
    JvmSearch given;
    given.setVerifyClass("", "Mine");
    EXPECT_EQ(text(given.getVerifyClass().classpath), "");
}

}  // namespace
}  // namespace corvane
