// What callers rely on with files, directories and drives, on Windows and on its stand-in alike.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <set>

#include "Testing.h"

namespace corvane {
namespace {

using testing::listing;
using testing::Scratch;

FileGuard open(const std::string& path, DWORD access, DWORD disposition = OPEN_EXISTING) {
    return FileGuard(
        CreateFileA(path.c_str(), access, 0, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

DWORD attributesOf(const std::string& path) {
    return GetFileAttributesA(path.c_str());
}

TEST(Files, FailuresHaveWindowsCodes) {
    const Scratch scratch;
    scratch.file("file", "x");
    scratch.file("full\\inner");
    ASSERT_TRUE(SetFileAttributesA(scratch.file("locked").c_str(), FILE_ATTRIBUTE_READONLY));
    const struct {
        const char* operation;
        bool (*works)(const char* path);
        std::vector<std::pair<const char*, DWORD>> failures;
    } cases[] = {
        {"GetFileAttributesA",
         [](const char* path) { return GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES; },
         {{"no", ERROR_FILE_NOT_FOUND},
          {"no\\no", ERROR_PATH_NOT_FOUND},
          {"file\\no", ERROR_PATH_NOT_FOUND}}},
        {"DeleteFileA",
         [](const char* path) { return DeleteFileA(path) != FALSE; },
         {{"no", ERROR_FILE_NOT_FOUND},
          {"no\\no", ERROR_PATH_NOT_FOUND},
          {"full", ERROR_ACCESS_DENIED},
          {"locked", ERROR_ACCESS_DENIED}}},
        {"RemoveDirectoryA",
         [](const char* path) { return RemoveDirectoryA(path) != FALSE; },
         {{"no", ERROR_FILE_NOT_FOUND},
          {"no\\no", ERROR_PATH_NOT_FOUND},
          {"file", ERROR_DIRECTORY},
          {"full", ERROR_DIR_NOT_EMPTY}}},
        {"CreateDirectoryA",
         [](const char* path) { return CreateDirectoryA(path, nullptr) != FALSE; },
         {{"full", ERROR_ALREADY_EXISTS},
          {"file", ERROR_ALREADY_EXISTS},
          {"no\\no", ERROR_PATH_NOT_FOUND}}},
        {"CreateFileA to read",
         [](const char* path) { return static_cast<bool>(open(path, GENERIC_READ)); },
         {{"no", ERROR_FILE_NOT_FOUND},
          {"no\\no", ERROR_PATH_NOT_FOUND},
          {"full", ERROR_ACCESS_DENIED}}},
        {"CreateFileA to write",
         [](const char* path) { return static_cast<bool>(open(path, GENERIC_WRITE, OPEN_ALWAYS)); },
         {{"no\\no", ERROR_PATH_NOT_FOUND}, {"full", ERROR_ACCESS_DENIED}}},
        {"FindFirstFileA",
         [](const char* path) {
             WIN32_FIND_DATAA data;
             return static_cast<bool>(FindGuard(FindFirstFileA(path, &data)));
         },
         {{"no\\*", ERROR_PATH_NOT_FOUND}}},
        {"GetTempFileNameA",
         [](const char* path) {
             char name[MAX_PATH];
             return GetTempFileNameA(path, "LRE", 0, name) != 0;
         },
         {{"no", ERROR_DIRECTORY}, {"file", ERROR_DIRECTORY}}},
    };
    for (const auto& [operation, works, failures] : cases) {
        for (const auto& [path, code] : failures) {
            SetLastError(NO_ERROR);
            EXPECT_FALSE(works(scratch.path(path).c_str())) << operation << " " << path;
            EXPECT_EQ(GetLastError(), code) << operation << " " << path;
        }
    }
    EXPECT_EQ(attributesOf(""), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
}

TEST(Files, AttributesTellDirectoryAndReadOnly) {
    const Scratch scratch;
    const std::string file = scratch.file("file");
    const DWORD told = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
    EXPECT_EQ(attributesOf(scratch.path()) & told, DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_EQ(attributesOf(scratch.path() + "\\") & told, DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_EQ(attributesOf(file) & told, 0u);
    ASSERT_TRUE(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(attributesOf(file) & told, DWORD{FILE_ATTRIBUTE_READONLY});
    ASSERT_TRUE(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_TRUE(DeleteFileA(file.c_str()));
    // Dots are resolved in the text, whether or not their directories are there.
    EXPECT_NE(attributesOf(scratch.path("no\\..\\.")), INVALID_FILE_ATTRIBUTES);
}

TEST(Files, ListingsAreCompleteAndEndWithTheirCode) {
    const Scratch scratch;
    scratch.file("a.txt");
    scratch.file("b c");
    scratch.directory("sub");
    EXPECT_EQ(listing(scratch.path()), (std::vector<std::string>{"a.txt", "b c", "sub\\"}));
    WIN32_FIND_DATAA data;
    const FindGuard find(FindFirstFileA(scratch.path("*").c_str(), &data));
    std::multiset<std::string> all{data.cFileName};
    while (FindNextFileA(find.get(), &data))
        all.insert(data.cFileName);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_NO_MORE_FILES});
    EXPECT_EQ(all, (std::multiset<std::string>{".", "..", "a.txt", "b c", "sub"}));
    EXPECT_FALSE(FindClose(INVALID_HANDLE_VALUE));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_HANDLE});
}

TEST(Files, TemporaryNamesAreFreeAndCreated) {
    char path[MAX_PATH];
    const DWORD length = GetTempPathA(MAX_PATH, path);
    EXPECT_EQ(length, std::strlen(path));
    EXPECT_EQ(path[length - 1], '\\');
    EXPECT_EQ(GetTempPathA(0, nullptr), length + 1);
    EXPECT_EQ(GetTempPathA(length, path), length + 1);

    const Scratch scratch;
    for (int i = 0; i < 20; ++i) {
        // A separator at the end isn't doubled.
        const std::string directory = scratch.path() + (i % 2 != 0 ? "\\" : "");
        const UINT number = GetTempFileNameA(directory.c_str(), "LREX", 0, path);
        ASSERT_NE(number, 0u);
        const std::string name = std::string(path).substr(scratch.path().size() + 1);
        ASSERT_TRUE(name.starts_with("LRE") && name.ends_with(".tmp")) << name;
        EXPECT_EQ(std::stoul(name.substr(3), nullptr, 16), number);
        EXPECT_LE(name.size(), 3u + 4 + 4);
    }
    EXPECT_EQ(listing(scratch.path()).size(), 20u);
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
    EXPECT_EQ(GetFileSize(file.get(), nullptr), 10000u);
    char* view = static_cast<char*>(MapViewOfFile(mapping.get(), FILE_MAP_WRITE, 0, 0, 0));
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(std::memcmp(view, "abc\0", 4), 0);
    std::memcpy(view + 3, "defgh", 5);
    EXPECT_TRUE(UnmapViewOfFile(view));
    EXPECT_FALSE(UnmapViewOfFile(view));
    mapping.reset();
    EXPECT_EQ(SetFilePointer(file.get(), 5, nullptr, FILE_BEGIN), 5u);
    EXPECT_TRUE(SetEndOfFile(file.get()));
    EXPECT_EQ(SetFilePointer(file.get(), 4, nullptr, FILE_BEGIN), 4u);
    char rest[4];
    for (const DWORD expected : {1u, 0u}) {
        DWORD count = 9;
        EXPECT_TRUE(ReadFile(file.get(), rest, sizeof rest, &count, nullptr));
        EXPECT_EQ(count, expected);
    }
    file.reset();
    EXPECT_EQ(scratch.read("mapped"), "abcde");
}

TEST(Files, StreamsOpenByWindowsPaths) {
    const Scratch scratch;
    const std::string path = scratch.file("stream", "one\n");
    {
        const StreamGuard stream(openStream(path.c_str(), "a"));
        ASSERT_TRUE(stream);
        std::fputs("two", stream.get());
    }
    EXPECT_EQ(scratch.readText("stream"), "one\ntwo");
    const struct {
        std::string path;
        const char* mode;
        int error;
    } failures[] = {
        {scratch.path("no"), "r", ENOENT},
        {scratch.path("no\\no"), "w", ENOENT},
        {scratch.path(), "r", EACCES},
        {scratch.path(), "w", EACCES},
    };
    for (const auto& row : failures) {
        errno = 0;
        EXPECT_FALSE(StreamGuard(openStream(row.path.c_str(), row.mode))) << row.path << row.mode;
        EXPECT_EQ(errno, row.error) << row.path << " " << row.mode;
    }
}

TEST(Drives, CurrentDriveIsThereAndHasSpace) {
    const int number = _getdrive();
    ASSERT_TRUE(number >= 1 && number <= 26);
    const std::string root = std::string(1, static_cast<char>('A' + number - 1)) + ":\\";
    EXPECT_GE(GetDriveTypeA(root.c_str()), UINT{DRIVE_REMOVABLE});
    DWORD sectors = 0, bytes = 0, available = 0, total = 0;
    ASSERT_TRUE(GetDiskFreeSpaceA(root.c_str(), &sectors, &bytes, &available, &total));
    EXPECT_GE(sectors * bytes, 512u);
    EXPECT_GE(total, available);
    EXPECT_GT(available, 0u);

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
