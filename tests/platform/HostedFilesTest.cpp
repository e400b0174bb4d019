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

using namespace corvane::testing;

TEST(HostedFiles, DirectoriesAreTheUsersAlone) {
    const Scratch scratch;
    ASSERT_TRUE(CreateDirectoryA(scratch.path("mine").c_str(), nullptr));
    EXPECT_EQ(std::filesystem::status(scratch.native("mine")).permissions(),
              std::filesystem::perms::owner_all);
}

TEST(HostedFiles, LinksAreEntriesOfTheirOwn) {
    const Scratch scratch;
    const std::string inner = scratch.file("kept\\inner", "x");
    ASSERT_TRUE(SetFileAttributesA(inner.c_str(), FILE_ATTRIBUTE_READONLY));
    const std::string walked = scratch.directory("walked");
    std::filesystem::create_symlink(scratch.native("kept"), scratch.native("walked\\directory"));
    std::filesystem::create_symlink(scratch.native("kept\\inner"), scratch.native("walked\\file"));
    std::filesystem::create_symlink("/no/where", scratch.native("walked\\dangling"));
    EXPECT_EQ(listing(walked), "../ ./ dangling directory/ file ");
    EXPECT_EQ(attributesOf(walked + "\\directory"),
              FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT);
    EXPECT_EQ(attributesOf(walked + "\\dangling"), FILE_ATTRIBUTE_NORMAL);
    // The link isn't read-only, and changing the mark leaves its file alone.
    EXPECT_TRUE(SetFileAttributesA((walked + "\\dangling").c_str(), FILE_ATTRIBUTE_READONLY));
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
    std::filesystem::permissions(scratch.native("marked"), std::filesystem::perms{0666});
    ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(std::filesystem::status(scratch.native("marked")).permissions(),
              std::filesystem::perms{0444});
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

TEST(HostedFiles, ClosingAFailedStreamKeepsErrno) {
    {
        const StreamGuard full(openStream("/dev/full", "w"));
        std::fputs("x", full.get());
        errno = EDOM;
    }
    EXPECT_EQ(errno, EDOM);
}

TEST(HostedFiles, OddNamesAndNamedPipes) {
    const Scratch scratch;
    for (const char* missing : {"Z:\\no such file", "/tmp/no such directory/"}) {
        EXPECT_EQ(attributesOf(missing), INVALID_FILE_ATTRIBUTES);
        EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND) << missing;
    }
    scratch.file("Name");
    std::ofstream(scratch.native() / "odd\\name");
    EXPECT_EQ(listing(scratch.path()), "../ ./ Name ");
    EXPECT_EQ(attributesOf(scratch.path("name")), INVALID_FILE_ATTRIBUTES);
    // Nobody writes, and yet the reader isn't held up.
    ASSERT_EQ(mkfifo(scratch.native("pipe").c_str(), 0600), 0);
    EXPECT_TRUE(FileGuard(CreateFileA(scratch.path("pipe").c_str(), GENERIC_READ, 0, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)));
}

TEST(HostedFiles, TemporaryFilesAreTheOwnersAndFitTheBuffer) {
    const Scratch scratch;
    char name[MAX_PATH];
    ASSERT_NE(GetTempFileNameA(scratch.path().c_str(), "x", 0, name), 0u);
    EXPECT_EQ(std::filesystem::status(nativePath(name)).permissions(),
              std::filesystem::perms{0600});
    std::string deep = scratch.path();
    while (deep.size() < MAX_PATH - 13)
        deep += "\\.";
    EXPECT_EQ(GetTempFileNameA(deep.c_str(), "x", 0, name), 0u);
    EXPECT_EQ(GetLastError(), ERROR_BUFFER_OVERFLOW);
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

TEST(Faults, FailTheNthCallOnly) {
    const Scratch scratch;
    const auto works = [&] { return attributesOf(scratch.path()) != INVALID_FILE_ATTRIBUTES; };
    {
        const ScopedFault other("DeleteFileA", ERROR_NOT_READY);
        EXPECT_TRUE(works());
        const ScopedFault every("GetFileAttributesA", ERROR_WRITE_PROTECT, 0);
        EXPECT_FALSE(works());
        EXPECT_FALSE(works());
    }
    EXPECT_TRUE(works());
    failOperation("GetFileAttributesA", 1);
    failOperation("GetFileAttributesA", 2, 2);
    for (const DWORD code : {1u, 2u}) {
        EXPECT_FALSE(works());
        EXPECT_EQ(GetLastError(), code);
    }
    EXPECT_TRUE(works());
}

TEST(Faults, StreamsTellTheReasonInErrno) {
    const ScopedFault fault("openStream", ERROR_DISK_FULL);
    EXPECT_EQ(openStream("Z:\\tmp", "r"), nullptr);
    EXPECT_EQ(errno, ENOSPC);
}

}  // namespace
}  // namespace corvane::hosted
