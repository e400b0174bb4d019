// What callers rely on with files, directories and drives, on Windows and on its stand-in alike.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

#include "Testing.h"

namespace corvane {
namespace {

using namespace corvane::testing;

FileGuard open(const std::string& path, DWORD access, DWORD disposition = OPEN_EXISTING) {
    return FileGuard(
        CreateFileA(path.c_str(), access, 0, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

TEST(Files, FailuresHaveWindowsCodes) {
    const Scratch scratch;
    scratch.file("full\\inner");
    scratch.file("file");
    ASSERT_TRUE(SetFileAttributesA(scratch.file("locked").c_str(), FILE_ATTRIBUTE_READONLY));
    // The codes of an operation on some names.
    const auto codes = [&](auto operation, auto... names) {
        std::string text;
        for (const char* name : {names...}) {
            SetLastError(NO_ERROR);
            text += operation(scratch.path(name).c_str()) ? "works " : "";
            text += std::to_string(GetLastError()) + " ";
        }
        return text;
    };
    const auto ask = [](const char* path) { return ~attributesOf(path) != 0; };
    EXPECT_EQ(codes(ask, "no", "no\\no", "file\\no"), "2 3 3 ");
    EXPECT_FALSE(ask(""));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(codes(DeleteFileA, "no", "no\\no", "full", "locked"), "2 3 5 5 ");
    EXPECT_EQ(codes(RemoveDirectoryA, "no", "no\\no", "file", "full"), "2 3 267 145 ");
    const auto make = [](const char* path) { return CreateDirectoryA(path, nullptr); };
    EXPECT_EQ(codes(make, "no\\no", "file", "full"), "3 183 183 ");
    const std::string moved = scratch.path("moved");
    const auto move = [&](const char* path) { return MoveFileExA(path, moved.c_str(), 0); };
    EXPECT_EQ(codes(move, "no", "no\\no"), "2 3 ");
    EXPECT_TRUE(move(scratch.path("full").c_str()));
    EXPECT_EQ(codes(move, "file"), "183 ");
    EXPECT_TRUE(MoveFileExA(moved.c_str(), scratch.path("full").c_str(), 0));
    const auto read = [](const char* path) { return open(path, GENERIC_READ); };
    EXPECT_EQ(codes(read, "no", "no\\no", "full"), "2 3 5 ");
    const auto write = [](const char* path) { return open(path, GENERIC_WRITE, OPEN_ALWAYS); };
    EXPECT_EQ(codes(write, "no\\no", "full"), "3 5 ");
    char name[MAX_PATH];
    const auto nameIn = [&](const char* path) { return GetTempFileNameA(path, "LRE", 0, name); };
    EXPECT_EQ(codes(nameIn, "no", "file"), "267 267 ");
    EXPECT_EQ(listing(scratch.path("no")), "");
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
}

TEST(Files, AttributesTellDirectoryAndReadOnly) {
    const Scratch scratch;
    const std::string file = scratch.file("file");
    const auto told = [](const std::string& path) {
        return attributesOf(path) & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY);
    };
    // Dots are resolved in the text, whether or not their directories are there.
    for (const char* end : {"", "\\", "\\no\\..\\."})
        EXPECT_EQ(told(scratch.path() + end), DWORD{FILE_ATTRIBUTE_DIRECTORY}) << end;
    EXPECT_EQ(told(file), 0u);
    ASSERT_TRUE(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(told(file), DWORD{FILE_ATTRIBUTE_READONLY});
    ASSERT_TRUE(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_TRUE(DeleteFileA(file.c_str()));
}

TEST(Files, ListingsAreCompleteAndEndWithTheirCode) {
    const Scratch scratch;
    scratch.file("a.txt");
    scratch.file("b c");
    scratch.directory("sub");
    EXPECT_EQ(listing(scratch.path()), "../ ./ a.txt b c sub/ ");
    EXPECT_EQ(GetLastError(), DWORD{ERROR_NO_MORE_FILES});
    EXPECT_FALSE(FindClose(INVALID_HANDLE_VALUE));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_HANDLE});
}

TEST(Files, TemporaryNamesAreFreeAndCreated) {
    char path[MAX_PATH];
    const DWORD length = GetTempPathA(MAX_PATH, path);
    EXPECT_EQ(length, std::strlen(path));
    EXPECT_EQ(path[length - 1], '\\');
    EXPECT_EQ(GetTempPathA(length, path), length + 1);

    const Scratch scratch;
    for (int i = 0; i < 20; ++i) {
        // A separator at the end isn't doubled.
        const std::string directory = scratch.path() + (i % 2 != 0 ? "\\" : "");
        const UINT number = GetTempFileNameA(directory.c_str(), "LREX", 0, path);
        const std::string name = std::string(path).substr(scratch.path().size() + 1);
        ASSERT_TRUE(name.starts_with("LRE") && name.ends_with(".tmp")) << name;
        EXPECT_EQ(std::stoul(name.substr(3), nullptr, 16), number);
        EXPECT_TRUE(number != 0 && number <= 0xFFFF);
    }
    EXPECT_EQ(scratch.list().size(), 20u);
}

TEST(Files, OpenFilesAreHeldAndKeepTheirContent) {
    const Scratch scratch;
    const std::string path = scratch.path("held");
    for (const char* content : {"", "kept"}) {
        FileGuard held = open(path, GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS);
        ASSERT_TRUE(held);
        EXPECT_FALSE(open(path, GENERIC_READ));
        EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
        EXPECT_FALSE(DeleteFileA(path.c_str()));
        EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
        held.reset();
        EXPECT_EQ(scratch.read("held"), content);
        scratch.file("held", "kept");
    }
    EXPECT_TRUE(DeleteFileA(path.c_str()));
}

TEST(Files, MappingGrowsAndTheEndCutsAgain) {
    const Scratch scratch;
    FileGuard file = open(scratch.file("mapped", "abc"), GENERIC_READ | GENERIC_WRITE);
    HandleGuard mapping(CreateFileMappingA(file.get(), nullptr, PAGE_READWRITE, 0, 10000, nullptr));
    ASSERT_TRUE(mapping);
    DWORD high = 9;
    EXPECT_EQ(GetFileSize(file.get(), &high), 10000u);
    EXPECT_EQ(high, 0u);
    char* view = static_cast<char*>(MapViewOfFile(mapping.get(), FILE_MAP_WRITE, 0, 0, 0));
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(std::memcmp(view, "abc\0", 4), 0);
    std::memcpy(view + 3, "defgh", 5);
    EXPECT_TRUE(UnmapViewOfFile(view));
    EXPECT_FALSE(UnmapViewOfFile(view));
    mapping.reset();
    EXPECT_EQ(SetFilePointer(file.get(), 5, nullptr, FILE_BEGIN), 5u);
    EXPECT_TRUE(SetEndOfFile(file.get()));
    EXPECT_EQ(SetFilePointer(file.get(), -1, nullptr, FILE_BEGIN), INVALID_SET_FILE_POINTER);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_NEGATIVE_SEEK});
    EXPECT_EQ(SetFilePointer(file.get(), 4, nullptr, FILE_BEGIN), 4u);
    char rest[4];
    for (const DWORD expected : {1u, 0u}) {
        DWORD count = 9;
        EXPECT_TRUE(ReadFile(file.get(), rest, sizeof rest, &count, nullptr));
        EXPECT_EQ(count, expected);
    }
    file.reset();
    EXPECT_EQ(scratch.read("mapped"), "abcde");
    file = open(scratch.file("empty"), GENERIC_READ | GENERIC_WRITE);
    EXPECT_EQ(CreateFileMappingA(file.get(), nullptr, PAGE_READWRITE, 0, 0, nullptr), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_INVALID});
}

TEST(Files, StreamsOpenByWindowsPaths) {
    const Scratch scratch;
    const std::string path = scratch.file("stream", "one\n");
    std::fputs("two", StreamGuard(openStream(path.c_str(), "a")).get());
    EXPECT_EQ(scratch.readText("stream"), "one\ntwo");
    const auto failure = [&](const char* name, const char* mode) {
        errno = 0;
        return StreamGuard(openStream(scratch.path(name).c_str(), mode)) ? 0 : errno;
    };
    EXPECT_EQ(failure("no", "r"), ENOENT);
    EXPECT_EQ(failure("no\\no", "w"), ENOENT);
    EXPECT_EQ(failure("", "r"), EACCES);
    EXPECT_EQ(failure("", "w"), EACCES);
}

TEST(Drives, CurrentDriveIsThereAndHasSpace) {
    const std::string root = {static_cast<char>('A' + _getdrive() - 1), ':', '\\'};
    EXPECT_GE(GetDriveTypeA(root.c_str()), UINT{DRIVE_REMOVABLE});
    DWORD sectors = 0, bytes = 0, available = 0, total = 0;
    ASSERT_TRUE(GetDiskFreeSpaceA(root.c_str(), &sectors, &bytes, &available, &total));
    EXPECT_TRUE(sectors > 0 && bytes % 512 == 0);
    EXPECT_TRUE(0 < available && available < total);

    const DWORD size = GetLogicalDriveStringsA(0, nullptr);
    std::string roots(size, 'x');
    EXPECT_EQ(GetLogicalDriveStringsA(size, roots.data()), size - 1);
    EXPECT_NE(roots.find(root + '\0'), std::string::npos);

    // No test machine has a drive of this letter.
    EXPECT_EQ(GetDriveTypeA("Q:\\"), UINT{DRIVE_NO_ROOT_DIR});
    EXPECT_FALSE(GetDiskFreeSpaceA("Q:\\", &sectors, &bytes, &available, &total));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
}

}  // namespace
}  // namespace corvane
