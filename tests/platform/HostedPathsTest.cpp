// Drives and paths of the stand-in: the table, and both ways through it.
#include <gtest/gtest.h>
#include <unistd.h>

#include "Testing.h"
#include "platform/hosted/DriveTable.h"
#include "platform/hosted/Paths.h"

namespace corvane::hosted {
namespace {

using corvane::testing::ScopedVariable;
using corvane::testing::Scratch;

// The table as "LETTER=directory:type " for each drive.
std::string dump(const std::vector<Drive>& drives) {
    std::string text;
    for (const Drive& drive : drives)
        text += std::string(1, drive.letter) + "=" + drive.directory + ":" +
                std::to_string(drive.type) + " ";
    return text;
}

TEST(DriveTable, GoodAndBadEntries) {
    const struct {
        const char *table, *drives;
    } cases[] = {
        {"C=/srv/c,fixed;D=/srv/d,cdrom", "C=/srv/c:3 D=/srv/d:5 "},
        {"D=/d,remote;c=/c/;A=/a,removable;R=/r,ramdisk", "A=/a:2 C=/c:3 D=/d:4 R=/r:6 "},
        {"Z=/,remote", "Z=:4 "},
        {"C=/;D=//x/./y/../z//", "C=:3 D=/x/z:3 "},
        {"C=/one;C=/two", "C=/one:3 "},
        {"", ""},
        {";;=;C;C=;C=rel;CC=/x;1=/x;C=/x,floppy;C=/x,;Z=/other", ""},
        {"C=/x,bad;D=/d", "D=/d:3 "},
    };
    for (const auto& row : cases)
        EXPECT_EQ(dump(parseDriveTable(row.table)), row.drives) << row.table;
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
    const struct {
        const char *path, *host;  // empty: error 3
    } cases[] = {
        {"C:\\a\\b", "/srv/c/a/b"},
        {"c:/a/b", "/srv/c/a/b"},
        {"C:\\", "/srv/c"},
        {"C:", "/srv/c"},
        {"C:name", "/srv/c/name"},
        {"C:\\a\\\\b\\", "/srv/c/a/b"},
        {"C:\\a\\.\\no\\..\\b", "/srv/c/a/b"},
        {"C:\\..\\..\\etc", "/srv/c/etc"},
        {"D:\\", "/"},
        {"D:\\x y\\z", "/x y/z"},
        {"Z:\\tmp", "/tmp"},
        {"Q:\\x", ""},
        {"", ""},
        {"/tmp/x", "/tmp/x"},
        {"/tmp/x\\y.tmp", "/tmp/x/y.tmp"},
        {"a\\b", "a/b"},
        {"..\\b", "../b"},
    };
    for (const auto& row : cases) {
        SetLastError(NO_ERROR);
        const auto host = hostPath(row.path);
        EXPECT_EQ(host.value_or(""), row.host) << row.path;
        EXPECT_EQ(GetLastError(), host ? NO_ERROR : ERROR_PATH_NOT_FOUND) << row.path;
    }
}

TEST(Paths, HostToWindowsByTheLongestDirectory) {
    const ScopedVariable drives("CORVANE_DRIVES", "C=/srv/c;D=/srv/c/deep;E=/srv");
    const struct {
        const char *host, *path;
    } cases[] = {
        {"/srv/c/x", "C:\\x"},
        {"/srv/c", "C:\\"},
        {"/srv/c/deep/x/y", "D:\\x\\y"},
        {"/srv/cat", "E:\\cat"},
        {"/srv/c/deeper", "C:\\deeper"},
        {"/tmp/x", "Z:\\tmp\\x"},
        {"/", "Z:\\"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(windowsPath(row.host), row.path) << row.host;
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
    const struct {
        const char *tmpdir, *path;
    } cases[] = {
        {nullptr, "Z:\\tmp\\"},      {"", "Z:\\tmp\\"}, {"/srv/t", "T:\\"},
        {"/srv/t//no/", "T:\\no\\"}, {"/", "Z:\\"},
    };
    for (const auto& row : cases) {
        const ScopedVariable tmpdir("TMPDIR", row.tmpdir);
        char path[MAX_PATH];
        GetTempPathA(MAX_PATH, path);
        EXPECT_STREQ(path, row.path);
    }
}

}  // namespace
}  // namespace corvane::hosted
