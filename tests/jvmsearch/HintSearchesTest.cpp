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

TEST_F(HintSearchesTest, StarsInTheNamesOfKeys) {
    const std::string key = "\\HKEY_CURRENT_USER\\Software\\CorvaneTest\\";
    const test::RegistryText older(run.scratch, "jdk\\17.0.9\\MSI", "Path", "C:\\9");
    const test::RegistryText newer(run.scratch, "JDK\\17.0.10\\MSI", "Path", "C:\\10");
    const test::RegistryText early(run.scratch, "jdk\\17.0.10-ea\\MSI", "Path", "C:\\10-ea");
    const test::RegistryText other(run.scratch, "jdk\\21", "Path", "C:\\21");
    const test::RegistryText star(run.scratch, "jdk\\18", "*", "C:\\star");
    const struct {
        const char* hint;
        std::vector<std::pair<const char*, const char*>> homes;
    } cases[] = {
        {"*\\*\\MSI\\Path",
         {{"C:\\10", "jdk\\17.0.10\\MSI\\Path"},
          {"C:\\10-ea", "jdk\\17.0.10-ea\\MSI\\Path"},
          {"C:\\9", "jdk\\17.0.9\\MSI\\Path"}}},
        {"jdk\\1*\\none\\Path", {}},
        {"jdk\\18\\*", {{"C:\\star", "jdk\\18\\*"}}},
    };
    std::string expected;
    for (const auto& [hint, homes] : cases) {
        tags.setValue("PLATFORM_HINT", (key + hint).c_str());
        searchPlatformHints(file, verifyClass);
        for (const auto& [home, source] : homes)
            expected += std::string("|Checking JVM at ") + home +
                        " which was resolved from platform hint " + key + source;
        EXPECT_EQ(run.logged("Checking JVM at ") + run.logged("WARNING"), expected);
    }
    EXPECT_TRUE(failureOf([&] {
                    tags.setValue("PLATFORM_HINT", "\\HKEY_*\\a\\b");
                    searchPlatformHints(file, verifyClass);
                }).starts_with("Invalid hive (HKEY_*)"));
}

TEST_F(HintSearchesTest, StarsInTheNamesOfDirectories) {
    for (const char* name : {"j\\jdk-17.0.9", "j\\jdk-17.0.10\\lib", "j\\JDK-17.0.10-ea", "j\\aab",
                             "k\\jdk-21", "k\\x"})
        std::filesystem::create_directories(run.scratch.native(name));
    run.scratch.write("j\\jdk-99", "a file");
    const std::string root = text(run.scratch.path()) + "\\";
    DirectoryTree tree;
    const auto expanded = [&](const char* pattern) {
        StringList places;
        tree.expand(root.c_str(), pattern, places);
        std::string names;
        for (const String& place : places)
            names += text(place).substr(root.size()) + " ";
        return names;
    };
    const std::pair<const char*, const char*> cases[] = {
        {"j\\jdk-*", "j\\jdk-17.0.10 j\\JDK-17.0.10-ea j\\jdk-17.0.9 "},
        {"*\\jdk-*", "k\\jdk-21 j\\jdk-17.0.10 j\\JDK-17.0.10-ea j\\jdk-17.0.9 "},
        {"j\\*k*.9", "j\\jdk-17.0.9 "},
        {"j\\*a*b", "j\\aab "},
        {"j\\a*ab*b", ""},
        {"j\\*\\lib", "j\\jdk-17.0.10\\lib "},
        {"none\\*", ""},
    };
    for (const auto& [pattern, places] : cases)
        EXPECT_EQ(expanded(pattern), places) << pattern;
    // What was listed once is not listed again.
    std::filesystem::remove_all(run.scratch.native("k"));
    EXPECT_EQ(expanded("k\\x*"), "k\\x ");
}

TEST_F(HintSearchesTest, EnvironmentHints) {
    const std::string home = text(run.home("env\\jdk-17.0.9", "17"));
    run.home("env\\jdk-17.0.10", "other");
    const std::string folder = text(run.scratch.path()) + "\\env";
    SetEnvironmentVariableA("CORVANE_TEST_HOMES", folder.c_str());
    SetEnvironmentVariableA("CORVANE_TEST_LIST", ("relative;\"" + home + "\\BIN\"").c_str());
    const struct {
        std::string hint;
        std::vector<std::string> homes;
    } cases[] = {
        {"%CORVANE_TEST_NONE%\\x;100%;relative;%CORVANE_TEST_HOMES%\\no*", {}},
        {"%CORVANE_TEST_NONE%;%CORVANE_TEST_LIST%", {home + "\\"}},
        {"%CORVANE_TEST_HOMES%\\*17*", {folder + "\\jdk-17.0.10\\", home + "\\"}},
    };
    std::string expected;
    for (const auto& [hint, homes] : cases) {
        tags.setValue("ENV_HINT", hint.c_str());
        EXPECT_EQ(searchEnvHints(file, verifyClass) != nullptr, !homes.empty()) << hint;
        for (const std::string& tried : homes)
            expected +=
                "|Checking JVM at " + tried + " which was resolved from environment hint " + hint;
        EXPECT_EQ(run.logged("Checking JVM at "), expected);
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
