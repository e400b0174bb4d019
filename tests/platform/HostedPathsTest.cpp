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

TEST(Paths, TheWindowsDirectoryIsTheVariablesOrTheTemporaryOne) {
    char temporary[MAX_PATH] = "";
    temporary[GetTempPathA(MAX_PATH, temporary) - 1] = '\0';
    for (const char* const value : {"Z:\\win", "", static_cast<const char*>(nullptr)}) {
        const ScopedVariable windir("windir", value);
        char directory[MAX_PATH] = "";
        GetWindowsDirectoryA(directory, MAX_PATH);
        EXPECT_STREQ(directory, value != nullptr && *value != '\0' ? value : temporary);
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

}  // namespace
}  // namespace corvane::hosted
