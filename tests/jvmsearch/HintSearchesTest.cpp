// The searches by hint.
#include <gtest/gtest.h>

#include "jvm/search/PlatformHint.h"
#include "jvmsearch/SearchRun.h"
#include "support/System.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;

class HintSearchesTest : public ::testing::Test {
  protected:
    HintSearchesTest() { test::SearchRun::describe(tags, "Java 17", "17"); }

    static std::string resolved(const std::string& hint) {
        StringList paths;
        paths.add("left over");
        resolvePlatformHint(hint.c_str(), paths);
        return paths.count() == 0 ? "nothing" : text(paths.last());
    }

    test::SearchRun run;
    TagFile tags;
    JvmFile file{tags};
    VerifyClass verifyClass = run.search().getVerifyClass();
};

TEST_F(HintSearchesTest, RegistryHints) {
    const std::string key = "\\HKEY_CURRENT_USER\\Software\\CorvaneTest\\";
    const test::RegistryText named(run.scratch, "X", "Home", "C:\\by value");
    const test::RegistryText subkey(run.scratch, "Y\\Home", "", "C:\\by subkey");
    const test::RegistryText empty(run.scratch, "Z", "Home", "");
    EXPECT_EQ(resolved(key + "X\\Home"), "C:\\by value");
    EXPECT_EQ(resolved((key + "X\\Home").substr(1)), "C:\\by value");
    EXPECT_EQ(resolved(key + "Y\\Home"), "C:\\by subkey");
    EXPECT_EQ(resolved(key + "Z\\Home"), "nothing");
    EXPECT_EQ(resolved(""), "nothing");
    EXPECT_EQ(run.log(), "") << "so far nothing was wrong";

    EXPECT_EQ(resolved(key + "X\\None"), "nothing");
    EXPECT_EQ(resolved(key + "None\\Home"), "nothing");
    EXPECT_EQ(resolved("\\HKEY_CURRENT_USER\\CorvaneNoSuchKey"), "nothing");
    const std::string log = run.log();
    std::size_t warnings = 0;
    for (std::size_t at = log.find("WARNING: Invalid platform hint: "); at != std::string::npos;
         at = log.find("WARNING: Invalid platform hint: ", at + 1))
        ++warnings;
    EXPECT_EQ(warnings, 3u) << log;

    for (const char* bad : {"HKLM\\a", "\\hkey_local_machine\\a\\b", "no backslash", "\\"}) {
        const std::string message = failureOf([&] { resolved(bad); });
        EXPECT_EQ(message.find("Invalid hive ("), 0u) << message;
        EXPECT_NE(message.find(") specified in platform hint (" + std::string(bad) + ")."),
                  std::string::npos)
            << message;
    }
}

TEST_F(HintSearchesTest, WithoutPropertiesNothingIsTried) {
    tags.setValue("JVM_PROPERTIES", "");
    tags.setValue("JVM_HOME", run.home("jdk", "17"));
    tags.setValue("PATH_HINT", "jdk");
    tags.setValue("PLATFORM_HINT", "a bad hive");
    EXPECT_EQ(file.verifyJvmHomeTag(verifyClass), nullptr);
    EXPECT_EQ(file.searchPlatformHints(verifyClass), nullptr);
    EXPECT_EQ(file.searchPathHints(verifyClass), nullptr);
    EXPECT_EQ(file.searchPlatformJvmPaths(verifyClass), nullptr);
    const std::string warning =
        "|WARNING: Unable to verify  because the JVM_PROPERTIES tag was not specified.";
    EXPECT_EQ(run.logged(""), "|------------------" + warning + warning + warning + warning);
}

TEST_F(HintSearchesTest, ARegistryHintLeadsToAMatch) {
    const String home = run.home("by registry", "17");
    const test::RegistryText value(run.scratch, "X", "Home", text(home));
    const std::string hint = "\\HKEY_CURRENT_USER\\Software\\CorvaneTest\\X\\Home";
    tags.addValue("PLATFORM_HINT", "");
    tags.addValue("PLATFORM_HINT", hint.c_str());
    tags.addValue("PLATFORM_HINT", "not reached");
    const auto match = file.searchPlatformHints(verifyClass);
    ASSERT_NE(match, nullptr);
    EXPECT_EQ(text(match->home()), text(home));
    EXPECT_FALSE(match->temporary);
    EXPECT_EQ(run.logged("Searching") + run.logged("Checking"),
              "|Searching for Java 17 using platform hints|Checking JVM at " + text(home) +
                  " which was resolved from platform hint " + hint);
}

TEST_F(HintSearchesTest, ARelativeHintIsBesideTheOriginalLauncher) {
    run.home("orig\\jre", "17");
    run.context().originalLauncherPath = run.scratch.path("orig\\setup.exe");
    tags.addValue("PATH_HINT", "none");
    tags.addValue("PATH_HINT", "/jre");
    const auto match = file.searchPathHints(verifyClass);
    ASSERT_NE(match, nullptr);
    EXPECT_EQ(text(match->home()), text(run.scratch.path("orig\\/jre")));
    EXPECT_TRUE(match->temporary);
    EXPECT_EQ(run.logged("Checking"), "");
}

TEST_F(HintSearchesTest, AnAbsoluteHintIsTriedOnEveryDrive) {
    if (!test::MappedDrives::possible())
        GTEST_SKIP() << "the drives of this system can't be chosen";
    const test::MappedDrives drives(run.scratch,
                                    {{"C", "c"}, {"D", "d", "cdrom"}, {"E", "e", "remote"}});
    run.home("c\\jdk", "8");
    run.home("d\\jdk", "17");
    run.home("e\\jdk", "17");
    tags.setValue("PATH_HINT", "\\jdk");
    const auto match = file.searchPathHints(verifyClass);
    ASSERT_NE(match, nullptr);
    EXPECT_EQ(text(match->home()), "E:\\jdk");
    EXPECT_FALSE(match->temporary);
    EXPECT_EQ(run.logged("Checking"), "|Checking path hint C:\\jdk|Checking path hint E:\\jdk");
    const test::MappedDrives none(run.scratch, {});
    EXPECT_EQ(failureOf([&] { file.searchPathHints(verifyClass); }),
              "No drives found on this system.");
}

}  // namespace
}  // namespace corvane
