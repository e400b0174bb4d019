// Environment variables and paths.
#include <gtest/gtest.h>

#include "host/Environment.h"
#include "host/Paths.h"
#include "support/TestContext.h"

namespace corvane {
namespace {

using test::text;

TEST(EnvironmentTest, UnsetAndEmptyReadTheSame) {
    EXPECT_EQ(text(getEnvironmentValue("CORVANE_TEST_UNSET")), "");
    const String value(std::size_t{300}, 'v');
    setEnvironmentValue("CORVANE_TEST", value);
    EXPECT_EQ(text(getEnvironmentValue("CORVANE_TEST")), text(value));
    setEnvironmentValue("CORVANE_TEST", "x");
    EXPECT_EQ(text(getEnvironmentValue("CORVANE_TEST")), "x");
    setEnvironmentValue("CORVANE_TEST", "");
    EXPECT_EQ(text(getEnvironmentValue("CORVANE_TEST")), "");
}

TEST(PathsTest, DirectoriesAndCompanions) {
    const struct {
        const char* path;
        const char* parent;
        const char* launcherDirectory;
        const char* companion;
        const char* lastComponent;
    } cases[] = {
        {"C:\\a\\b.exe", "C:\\a", "C:\\a", "C:\\a\\b.sp", "b.exe"},
        {"C:\\b.exe", "C:", "C:", "C:\\b.sp", "b.exe"},
        {"b.exe", "", "", "b.exe.sp", "b.exe"},
        {"/x/b.exe", "", "/x", "/x/b.sp", "b.exe"},
        {"C:\\a.b\\setup", "C:\\a.b", "C:\\a.b", "C:\\a.b\\setup.sp", "setup"},
        {"C:\\a/b.c.exe", "C:", "C:\\a", "C:\\a/b.c.sp", "b.c.exe"},
    };
    test::TestContext run;
    for (const auto& [path, parent, directory, companion, last] : cases) {
        run.context.originalLauncherPath = path;
        EXPECT_EQ(text(parentDirectory(path)), parent);
        EXPECT_EQ(text(launcherDirectory()), directory);
        EXPECT_EQ(text(companionFile(".sp")), companion);
        EXPECT_EQ(text(lastPathComponent(path)), last);
    }
    EXPECT_TRUE(samePath("C:\\Temp", "c:\\tEMP"));
    EXPECT_FALSE(samePath("C:\\Temp", "C:\\Temp\\"));
    EXPECT_TRUE(pathBeginsWith("C:\\TEMP\\x", "c:\\temp"));
    EXPECT_FALSE(pathBeginsWith("C:", "C:\\"));
}

}  // namespace
}  // namespace corvane
