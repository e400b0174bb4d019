// What of the search only the stand-in can show: the platform's own list of JVMs, and the user's
// answer to the question for a JVM.
#include <gtest/gtest.h>

#include "host/Environment.h"
#include "jvmsearch/HandPick.h"
#include "jvmsearch/HintSearches.h"
#include "jvmsearch/SearchRun.h"
#include "support/hosted/ScopedInput.h"

namespace corvane {
namespace {

using test::text;

class HostedSearchTest : public ::testing::Test {
  protected:
    HostedSearchTest() { test::SearchRun::describe(tags, "Java 17", "17"); }
    ~HostedSearchTest() override { setEnvironmentValue("JAVA_HOME", formerJavaHome); }

    const String formerJavaHome = getEnvironmentValue("JAVA_HOME");
    test::SearchRun run;
    TagFile tags;
    JvmFile file{tags};
};

TEST_F(HostedSearchTest, APlaceOfThePlatformLeadsBackToTheHome) {
    const std::string home = text(run.home("jdk", "17"));
    run.scratch.write("jdk\\bin\\behaviour", "version=17\n");
    setEnvironmentValue("JAVA_HOME", home.c_str());
    const struct {
        const char* exe;
        std::string candidate;
        bool matches;
    } cases[] = {{"bin\\java.exe", home + "\\", true},
                 {"java.exe", home + "\\bin", true},
                 {"jre\\bin\\java.exe", home + "\\bin\\", false}};
    for (const auto& [exe, candidate, matches] : cases) {
        tags.setValue("JVM_EXE", exe);
        const auto match = searchPlatformJvmPaths(file, run.search().getVerifyClass());
        ASSERT_EQ(match != nullptr, matches) << exe;
        const std::string line = "Checking JVM at " + candidate +
                                 " which was resolved from the platform JVM path " + home +
                                 "\\bin\n";
        EXPECT_NE(run.log().find(line), std::string::npos) << exe;
        EXPECT_EQ(match == nullptr ? candidate : text(match->home()), candidate);
    }
}

// What the user is told: tests/endtoend/cases/search_disk.
TEST_F(HostedSearchTest, TheUserPicksTheExecutableOfAJvm) {
    const std::string jdk = text(run.home("jdk", "any"));
    const struct {
        std::string answer;
        std::string home;  // empty for none
    } cases[] = {
        {jdk + "\\none.exe\n" + jdk + "\\bin\\java.exe", jdk},
        {"", ""},
        {text(run.scratch.write("BIN\\java.exe", "")), ""},
        {text(run.scratch.write("short.exe", "")), ""},
    };
    for (const auto& [answer, expected] : cases) {
        run.scratch.write("answer", answer + "\n");
        const test::ScopedInput input(run.scratch.native("answer").string());
        String home;
        String resolved;
        EXPECT_EQ(pickJvmByHand(home, resolved), !expected.empty()) << answer;
        EXPECT_EQ(text(home), expected) << answer;
    }
    ASSERT_EQ(run.context().tempFiles.count(), 1);
    const TagFile written(run.context().tempFiles.last());
    EXPECT_EQ(text(written.value("JVM_HOME", 0)), jdk);
    EXPECT_EQ(text(written.value("JVM_EXE", 0)), "bin\\java.exe");
    EXPECT_EQ(text(written.value("SYSTEM", 0)), " -D");
}

}  // namespace
}  // namespace corvane
