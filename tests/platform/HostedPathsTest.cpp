// Drives and paths of the stand-in: the table, and both ways through it.
#include <gtest/gtest.h>
#include <unistd.h>

#include "Testing.h"
#include "platform/hosted/DriveTable.h"
#include "platform/hosted/Paths.h"

namespace corvane::hosted {
namespace {

using namespace corvane::testing;

// The table as "LETTER=directory:type " for each drive.
std::string dump(const std::vector<Drive>& drives) {
    std::string text;
    for (const Drive& drive : drives)
        text += std::string(1, drive.letter) + "=" + drive.directory + ":" +
                std::to_string(drive.type) + " ";
    return text;
}

TEST(DriveTable, GoodAndBadEntries) {
    const std::pair<const char*, const char*> cases[] = {
        {"D=/d,remote;c=/c/;A=/a,removable;R=/r,ramdisk;B=/b,cdrom;F=/f,fixed",
         "A=/a:2 B=/b:5 C=/c:3 D=/d:4 F=/f:3 R=/r:6 "},
        {"Z=/,remote", "Z=:4 "},
        {"C=/;D=//x/./y/../z//", "C=:3 D=/x/z:3 "},
        {"C=/one;C=/two", "C=/one:3 "},
        {"", ""},
        {";;=;C;C=;C=rel;CC=/x;1=/x;C=/x,floppy;C=/x,;Z=/other", ""}};
    for (const auto& [table, drives] : cases)
        EXPECT_EQ(dump(parseDriveTable(table)), drives) << table;
}

std::string roots() {
    char text[128];
    return {text, GetLogicalDriveStringsA(sizeof text, text)};
}

TEST(DriveTable, IsReadAfreshWhenTheVariableChanges) {
    using namespace std::string_literals;
    const ScopedVariable drives("CORVANE_DRIVES", "D=/srv,cdrom;C=/tmp");
    EXPECT_EQ(roots(), "C:\\\0D:\\\0"s);
    EXPECT_EQ(GetDriveTypeA("d:\\"), DRIVE_CDROM);
    EXPECT_EQ(GetDriveTypeA("C:"), DRIVE_FIXED);
    // Z: can be opened but is no drive of the system.
    EXPECT_EQ(GetDriveTypeA("Z:\\"), DRIVE_NO_ROOT_DIR);
    EXPECT_NE(GetFileAttributesA("Z:\\tmp"), INVALID_FILE_ATTRIBUTES);
    SetEnvironmentVariableA("CORVANE_DRIVES", "nonsense");
    EXPECT_EQ(GetLogicalDriveStringsA(0, nullptr), 0u);
    SetEnvironmentVariableA("CORVANE_DRIVES", nullptr);
    EXPECT_EQ(roots(), "Z:\\\0"s);
    EXPECT_EQ(GetDriveTypeA("Z:\\"), DRIVE_FIXED);
}

TEST(Paths, WindowsToHost) {
    const ScopedVariable drives("CORVANE_DRIVES", "C=/srv/c;D=/");
    const std::pair<const char*, const char*> cases[] = {{R"(C:\a\\b\)", "/srv/c/a/b"},
                                                         {R"(c:/a/b)", "/srv/c/a/b"},
                                                         {R"(C:)", "/srv/c"},
                                                         {R"(C:name)", "/srv/c/name"},
                                                         {R"(C:\a\.\no\..\b)", "/srv/c/a/b"},
                                                         {R"(C:\..\..\etc)", "/srv/c/etc"},
                                                         {R"(D:\)", "/"},
                                                         {R"(Z:\x y\z)", "/x y/z"},
                                                         {R"(/tmp/x\y.tmp)", "/tmp/x/y.tmp"},
                                                         {R"(..\b)", "../b"}};
    for (const auto& [path, host] : cases)
        EXPECT_EQ(hostPath(path), host) << path;
    for (const char* path : {"Q:\\x", ""}) {
        SetLastError(NO_ERROR);
        EXPECT_FALSE(hostPath(path)) << path;
        EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND) << path;
    }
}

TEST(Paths, HostToWindowsByTheLongestDirectory) {
    const ScopedVariable drives("CORVANE_DRIVES", "C=/srv/c;D=/srv/c/deep;E=/srv");
    const std::pair<const char*, const char*> cases[] = {
        {"/srv/c", "C:\\"},       {"/srv/c/deep/x/y", "D:\\x\\y"},
        {"/srv/cat", "E:\\cat"},  {"/srv/c/deeper", "C:\\deeper"},
        {"/tmp/x", "Z:\\tmp\\x"}, {"/", "Z:\\"}};
    for (const auto& [host, path] : cases)
        EXPECT_EQ(windowsPath(host), path) << host;
}

TEST(Paths, CurrentDirectoryAndItsDrive) {
    const Scratch scratch;
    const std::string host = scratch.native().string();
    const std::string before = currentHostDirectory();
    const ScopedVariable drives("CORVANE_DRIVES", ("K=" + host).c_str());
    ASSERT_EQ(chdir(host.c_str()), 0);
    EXPECT_EQ(_getdrive(), 'K' - 'A' + 1);
    EXPECT_EQ(hostPath("\\x").value_or(""), host + "/x");
    EXPECT_EQ(absoluteHostPath("../x"), host.substr(0, host.rfind('/')) + "/x");
    ASSERT_EQ(chdir("/"), 0);
    EXPECT_EQ(_getdrive(), 26);
    EXPECT_EQ(absoluteHostPath("x"), "/x");
    ASSERT_EQ(chdir((before + "/").c_str()), 0);
}

TEST(Paths, TemporaryPathFollowsTheEnvironment) {
    const ScopedVariable drives("CORVANE_DRIVES", "T=/srv/t");
    const std::pair<const char*, const char*> cases[] = {
        {nullptr, "Z:\\tmp\\"}, {"", "Z:\\tmp\\"}, {"/srv/t//no/", "T:\\no\\"}, {"/", "Z:\\"}};
    for (const auto& [tmpdir, expected] : cases) {
        const ScopedVariable variable("TMPDIR", tmpdir);
        char path[MAX_PATH];
        GetTempPathA(MAX_PATH, path);
        EXPECT_STREQ(path, expected);
    }
}

}  // namespace
}  // namespace corvane::hosted
