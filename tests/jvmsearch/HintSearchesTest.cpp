// The searches by hint.
#include <gtest/gtest.h>

#include "jvmsearch/HintSearches.h"
#include "jvmsearch/PlatformHint.h"
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
    const struct {
        std::string hint;
        const char* path;
        bool warns;
    } cases[] = {
        {key + "X\\Home", "C:\\by value", false},
        {(key + "X\\Home").substr(1), "C:\\by value", false},
        {key + "Y\\Home", "C:\\by subkey", false},
        {key + "Z\\Home", "nothing", false},
        {"", "nothing", false},
        {key + "X\\None", "nothing", true},
        {"\\HKEY_CURRENT_USER\\CorvaneNoSuchKey", "nothing", true},
    };
    for (const auto& [hint, path, warns] : cases) {
        const std::size_t former = run.log().size();
        EXPECT_EQ(resolved(hint), path) << hint;
        EXPECT_EQ(run.log().find("WARNING: Invalid platform hint: ", former) != std::string::npos,
                  warns)
            << hint;
    }
    for (const std::string bad : {"HKLM\\a", "\\hkey_local_machine\\a\\b", "no backslash", "\\"}) {
        const std::string message = failureOf([&] { resolved(bad); });
        EXPECT_TRUE(message.starts_with("Invalid hive (")) << message;
        EXPECT_TRUE(message.ends_with(") specified in platform hint (" + bad + ").")) << message;
    }
}

TEST_F(HintSearchesTest, WithoutPropertiesNothingIsTried) {
    tags.setValue("JVM_PROPERTIES", "");
    tags.setValue("JVM_HOME", run.home("jdk", "17"));
    tags.setValue("PATH_HINT", "jdk");
    tags.setValue("PLATFORM_HINT", "a bad hive");
    EXPECT_EQ(verifyJvmHomeTag(file, verifyClass), nullptr);
    EXPECT_EQ(searchPlatformHints(file, verifyClass), nullptr);
    EXPECT_EQ(searchPathHints(file, verifyClass), nullptr);
    EXPECT_EQ(searchPlatformJvmPaths(file, verifyClass), nullptr);
    const std::string warning =
        "|WARNING: Unable to verify  because the JVM_PROPERTIES tag was not specified.";
    EXPECT_EQ(run.logged(""), "|------------------" + warning + warning + warning + warning);
}

}  // namespace
}  // namespace corvane
