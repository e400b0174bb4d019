// What the stand-in's files do beyond the contract of both builds: links, marks, names, faults.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "Testing.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/Paths.h"

namespace corvane::hosted {
namespace {

using corvane::testing::contentOf;
using corvane::testing::listing;
using corvane::testing::ScopedVariable;
using corvane::testing::Scratch;

std::string host(const std::string& path) {
    return hostPath(path.c_str()).value();
}

TEST(HostedFiles, LinksAreEntriesOfTheirOwn) {
    const Scratch scratch;
    const std::string kept = scratch.directory("kept");
    const std::string inner = scratch.file("kept\\inner", "x");
    ASSERT_TRUE(SetFileAttributesA(inner.c_str(), FILE_ATTRIBUTE_READONLY));
    const std::string walked = scratch.directory("walked");
    ASSERT_EQ(symlink(host(kept).c_str(), (host(walked) + "/directory").c_str()), 0);
    ASSERT_EQ(symlink(host(inner).c_str(), (host(walked) + "/file").c_str()), 0);
    ASSERT_EQ(symlink("/no/where", (host(walked) + "/dangling").c_str()), 0);
    // No walk enters the link to a directory.
    EXPECT_EQ(listing(walked + "\\*"), (std::vector<std::string>{"dangling", "directory", "file"}));
    EXPECT_EQ(GetFileAttributesA((walked + "\\directory").c_str()), FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(GetFileAttributesA((walked + "\\dangling").c_str()), FILE_ATTRIBUTE_NORMAL);
    // The link isn't read-only, and clearing the mark leaves its file alone.
    EXPECT_EQ(GetFileAttributesA((walked + "\\file").c_str()), FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(SetFileAttributesA((walked + "\\file").c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(GetFileAttributesA(inner.c_str()), FILE_ATTRIBUTE_READONLY);
    // Each is removed as its attributes say, and nothing behind it.
    EXPECT_FALSE(DeleteFileA((walked + "\\directory").c_str()));
    EXPECT_TRUE(RemoveDirectoryA((walked + "\\directory").c_str()));
    EXPECT_TRUE(DeleteFileA((walked + "\\file").c_str()));
    EXPECT_TRUE(DeleteFileA((walked + "\\dangling").c_str()));
    EXPECT_TRUE(RemoveDirectoryA(walked.c_str()));
    EXPECT_EQ(contentOf(inner), "x");
}

TEST(HostedFiles, ReadOnlyCountsForTheSuperuserToo) {
    const Scratch scratch;
    const std::string path = scratch.file("marked", "x");
    ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
    for (const DWORD disposition : {OPEN_EXISTING, OPEN_ALWAYS, CREATE_ALWAYS}) {
        EXPECT_EQ(CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, disposition, 0, nullptr),
                  INVALID_HANDLE_VALUE);
        EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    }
    for (const char* mode : {"w", "a", "r+"}) {
        errno = 0;
        EXPECT_EQ(openStream(path.c_str(), mode), nullptr) << mode;
        EXPECT_EQ(errno, EACCES) << mode;
    }
    EXPECT_EQ(contentOf(path), "x");
}

TEST(HostedFiles, NamesWithBackslashesAndCase) {
    const Scratch scratch;
    scratch.file("Name");
    const int odd = open((host(scratch.path()) + "/odd\\name").c_str(), O_CREAT | O_WRONLY, 0600);
    ASSERT_GE(odd, 0);
    close(odd);
    EXPECT_EQ(listing(scratch.path("*")), std::vector<std::string>{"Name"});
    EXPECT_TRUE(listing(scratch.path("n*")).empty());
    EXPECT_EQ(listing(scratch.path("[N]*")), std::vector<std::string>{});
    EXPECT_EQ(GetFileAttributesA(scratch.path("name").c_str()), INVALID_FILE_ATTRIBUTES);
    unlink((host(scratch.path()) + "/odd\\name").c_str());
}

TEST(HostedFiles, ListingOfAFileIsNoDirectory) {
    const Scratch scratch;
    WIN32_FIND_DATAA data;
    EXPECT_EQ(FindFirstFileA((scratch.file("file") + "\\*").c_str(), &data), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_DIRECTORY);
}

TEST(HostedFiles, NamedPipeDoesNotHoldTheOpener) {
    const Scratch scratch;
    ASSERT_EQ(mkfifo((host(scratch.path()) + "/pipe").c_str(), 0600), 0);
    EXPECT_TRUE(FileGuard(CreateFileA(scratch.path("pipe").c_str(), GENERIC_READ, 0, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)));
}

TEST(HostedFiles, DevicesAndMovesAndShortNames) {
    const Scratch scratch;
    const StreamGuard full(openStream("Z:\\dev\\full", "w"));
    ASSERT_TRUE(full);
    std::fputs("x", full.get());
    EXPECT_NE(std::fflush(full.get()), 0);
    const std::string file = scratch.file("file", "x");
    EXPECT_FALSE(MoveFileExA(file.c_str(), nullptr, MOVEFILE_DELAY_UNTIL_REBOOT));
    EXPECT_EQ(GetLastError(), ERROR_NOT_SUPPORTED);
    EXPECT_EQ(contentOf(file), "x");
}

TEST(HostedFiles, ProgramMarkFollowsTheRightToRead) {
    const Scratch scratch;
    const std::string path = scratch.file("program");
    ASSERT_EQ(chmod(host(path).c_str(), 0640), 0);
    EXPECT_TRUE(makeExecutable(path.c_str()));
    struct stat status {};
    ASSERT_EQ(stat(host(path).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0750u);
    EXPECT_FALSE(makeExecutable(scratch.path("no").c_str()));
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

TEST(HostedFiles, JvmPlacesExistAndComeOnce) {
    const Scratch scratch;
    scratch.directory("jdk");
    const std::string bin = scratch.directory("jdk\\bin");
    const auto first = [](const char* javaHome) {
        const ScopedVariable variable("JAVA_HOME", javaHome);
        const auto paths = platformJvmPaths();
        return paths.empty() ? "" : paths[0];
    };
    EXPECT_EQ(first(scratch.path("jdk").c_str()), bin);
    EXPECT_EQ(first((host(scratch.path()) + "/jdk/").c_str()), bin);
    EXPECT_NE(first(scratch.path("no").c_str()), bin);
    // What JAVA_HOME names doesn't come again.
    const auto all = [] {
        const ScopedVariable variable("JAVA_HOME", nullptr);
        return platformJvmPaths();
    }();
    for (const std::string& path : all) {
        EXPECT_EQ(GetFileAttributesA(path.c_str()), FILE_ATTRIBUTE_DIRECTORY) << path;
        const std::string home = path.substr(0, path.rfind('\\'));
        const ScopedVariable variable("JAVA_HOME", home.c_str());
        EXPECT_EQ(platformJvmPaths().size(), all.size());
        EXPECT_EQ(platformJvmPaths()[0], path);
    }
}

TEST(Faults, FailTheNthCallOnly) {
    const Scratch scratch;
    const std::string path = scratch.path();
    const auto works = [&] { return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; };
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
    failOperation("GetFileAttributesA", 1);
    clearFaults();
    EXPECT_TRUE(works());
}

TEST(Faults, EachKindOfOperationGivesItsFailureValue) {
    const auto failed = [](const char* name, auto call, auto failure) {
        const ScopedFault fault(name, ERROR_NOT_READY);
        EXPECT_EQ(call(), failure) << name;
        EXPECT_EQ(GetLastError(), ERROR_NOT_READY) << name;
    };
    HANDLE ends[2];
    DWORD number = 0;
    char text[MAX_PATH];
    HKEY key = nullptr;
    OSVERSIONINFOA version{};
    failed(
        "CreatePipe", [&] { return CreatePipe(&ends[0], &ends[1], nullptr, 0); }, FALSE);
    failed(
        "ReadFile", [&] { return ReadFile(nullptr, text, 1, &number, nullptr); }, FALSE);
    failed(
        "WaitForSingleObject", [] { return WaitForSingleObject(nullptr, 0); }, WAIT_FAILED);
    failed(
        "GetVersionExA", [&] { return GetVersionExA(&version); }, FALSE);
    failed(
        "GetTempFileNameA", [&] { return GetTempFileNameA("Z:\\tmp", "LRE", 0, text); }, 0u);
    failed(
        "GetTempPathA", [&] { return GetTempPathA(MAX_PATH, text); }, 0u);
    failed(
        "GetLogicalDriveStringsA", [] { return GetLogicalDriveStringsA(0, nullptr); }, 0u);
    failed(
        "FindFirstFileA", [] { return FindFirstFileA("Z:\\*", nullptr); }, INVALID_HANDLE_VALUE);
    failed(
        "CreateFileMappingA", [] { return CreateFileMappingA(nullptr, nullptr, 0, 0, 0, nullptr); },
        HANDLE{});
    failed(
        "RegOpenKeyExA", [&] { return RegOpenKeyExA(HKEY_USERS, "", 0, KEY_READ, &key); },
        static_cast<LSTATUS>(ERROR_NOT_READY));
    const ScopedFault fault("openStream", ERROR_DISK_FULL);
    EXPECT_EQ(openStream("Z:\\tmp", "r"), nullptr);
    EXPECT_EQ(errno, ENOSPC);
}

}  // namespace
}  // namespace corvane::hosted
