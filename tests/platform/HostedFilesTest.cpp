// What the stand-in's files do beyond the contract of both builds: links, marks, names, faults.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>

#include "Testing.h"
#include "platform/hosted/Faults.h"

namespace corvane::hosted {
namespace {

using corvane::testing::listing;
using corvane::testing::ScopedVariable;
using corvane::testing::Scratch;

DWORD attributesOf(const std::string& path) {
    return GetFileAttributesA(path.c_str());
}

TEST(HostedFiles, LinksAreEntriesOfTheirOwn) {
    const Scratch scratch;
    const std::string inner = scratch.file("kept\\inner", "x");
    ASSERT_TRUE(SetFileAttributesA(inner.c_str(), FILE_ATTRIBUTE_READONLY));
    const std::string walked = scratch.directory("walked");
    std::filesystem::create_symlink(scratch.native("kept"), scratch.native("walked\\directory"));
    std::filesystem::create_symlink(scratch.native("kept\\inner"), scratch.native("walked\\file"));
    std::filesystem::create_symlink("/no/where", scratch.native("walked\\dangling"));
    // No walk enters the link to a directory.
    EXPECT_EQ(listing(walked), (std::vector<std::string>{"dangling", "directory", "file"}));
    EXPECT_EQ(attributesOf(walked + "\\directory"), FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(attributesOf(walked + "\\dangling"), FILE_ATTRIBUTE_NORMAL);
    // The link isn't read-only, and clearing the mark leaves its file alone.
    EXPECT_EQ(attributesOf(walked + "\\file"), FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(SetFileAttributesA((walked + "\\file").c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(attributesOf(inner), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(DeleteFileA((walked + "\\directory").c_str()));
    EXPECT_TRUE(RemoveDirectoryA((walked + "\\directory").c_str()));
    EXPECT_TRUE(DeleteFileA((walked + "\\file").c_str()));
    EXPECT_TRUE(DeleteFileA((walked + "\\dangling").c_str()));
    EXPECT_TRUE(RemoveDirectoryA(walked.c_str()));
    EXPECT_EQ(scratch.read("kept\\inner"), "x");
}

TEST(HostedFiles, ReadOnlyCountsForStreamsAndTheSuperuserToo) {
    const Scratch scratch;
    const std::string path = scratch.file("marked", "x");
    ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_FALSE(FileGuard(CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                       FILE_ATTRIBUTE_NORMAL, nullptr)));
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    for (const char* mode : {"w", "a", "r+"}) {
        errno = 0;
        EXPECT_EQ(openStream(path.c_str(), mode), nullptr) << mode;
        EXPECT_EQ(errno, EACCES) << mode;
    }
    EXPECT_EQ(scratch.read("marked"), "x");
}

TEST(HostedFiles, OddNamesAndNamedPipes) {
    const Scratch scratch;
    scratch.file("Name");
    std::ofstream(scratch.native() / "odd\\name");
    EXPECT_EQ(listing(scratch.path()), std::vector<std::string>{"Name"});
    EXPECT_EQ(attributesOf(scratch.path("name")), INVALID_FILE_ATTRIBUTES);
    // Nobody writes, and yet the reader isn't held up.
    ASSERT_EQ(mkfifo(scratch.native("pipe").c_str(), 0600), 0);
    EXPECT_TRUE(FileGuard(CreateFileA(scratch.path("pipe").c_str(), GENERIC_READ, 0, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)));
}

TEST(HostedFiles, ProgramMarkFollowsTheRightToRead) {
    const Scratch scratch;
    const std::string path = scratch.file("program");
    ASSERT_EQ(chmod(scratch.native("program").c_str(), 0640), 0);
    EXPECT_TRUE(makeExecutable(path.c_str()));
    EXPECT_EQ(std::filesystem::status(scratch.native("program")).permissions(),
              std::filesystem::perms{0750});
    EXPECT_FALSE(makeExecutable(scratch.path("no").c_str()));
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

TEST(HostedFiles, JvmPlacesExistAndComeOnce) {
    const Scratch scratch;
    const std::string bin = scratch.directory("jdk\\bin");
    const auto places = [](const char* javaHome) {
        const ScopedVariable variable("JAVA_HOME", javaHome);
        return platformJvmPaths();
    };
    const auto all = places(nullptr);
    EXPECT_EQ(places(scratch.path("no").c_str()), all);
    for (const std::string& home : {scratch.path("jdk"), scratch.native("jdk").string() + "/"}) {
        const auto paths = places(home.c_str());
        EXPECT_EQ(paths.at(0), bin);
        EXPECT_EQ(paths.size(), all.size() + 1);
    }
    // What JAVA_HOME names doesn't come again.
    for (const std::string& path : all) {
        EXPECT_EQ(attributesOf(path), FILE_ATTRIBUTE_DIRECTORY) << path;
        const auto paths = places(path.substr(0, path.rfind('\\')).c_str());
        EXPECT_EQ(paths.at(0), path);
        EXPECT_EQ(paths.size(), all.size());
    }
}

TEST(Faults, FailTheNthCallOnly) {
    const Scratch scratch;
    const auto works = [&] { return attributesOf(scratch.path()) != INVALID_FILE_ATTRIBUTES; };
    {
        const ScopedFault second("GetFileAttributesA", ERROR_NOT_READY, 2);
        const ScopedFault other("DeleteFileA", ERROR_NOT_READY);
        EXPECT_TRUE(works());
        EXPECT_FALSE(works());
        EXPECT_EQ(GetLastError(), ERROR_NOT_READY);
        EXPECT_TRUE(works());
    }
    {
        const ScopedFault every("GetFileAttributesA", ERROR_WRITE_PROTECT, 0);
        EXPECT_FALSE(works());
        EXPECT_FALSE(works());
    }
    EXPECT_TRUE(works());
    failOperation("GetFileAttributesA", 1);
    failOperation("GetFileAttributesA", 2, 2);
    EXPECT_FALSE(works());
    EXPECT_EQ(GetLastError(), 1u);
    EXPECT_FALSE(works());
    EXPECT_EQ(GetLastError(), 2u);
    EXPECT_TRUE(works());
}

TEST(Faults, EachKindOfOperationGivesItsFailureValue) {
    const auto failed = [](const char* name, auto call, auto failure) {
        const ScopedFault fault(name, ERROR_NOT_READY);
        EXPECT_EQ(call(), failure) << name;
        EXPECT_EQ(GetLastError(), ERROR_NOT_READY) << name;
    };
    HANDLE ends[2];
    char text[MAX_PATH];
    HKEY key = nullptr;
    // clang-format off
    failed("CreatePipe", [&] { return CreatePipe(&ends[0], &ends[1], nullptr, 0); }, FALSE);
    failed("WaitForSingleObject", [] { return WaitForSingleObject(nullptr, 0); }, WAIT_FAILED);
    failed("GetTempPathA", [&] { return GetTempPathA(MAX_PATH, text); }, 0u);
    failed("FindFirstFileA", [] { return FindFirstFileA("Z:\\*", nullptr); }, INVALID_HANDLE_VALUE);
    failed("RegOpenKeyExA", [&] { return RegOpenKeyExA(HKEY_USERS, "", 0, KEY_READ, &key); },
           static_cast<LSTATUS>(ERROR_NOT_READY));
    // clang-format on
    const ScopedFault fault("openStream", ERROR_DISK_FULL);
    EXPECT_EQ(openStream("Z:\\tmp", "r"), nullptr);
    EXPECT_EQ(errno, ENOSPC);
}

}  // namespace
}  // namespace corvane::hosted
