// What callers rely on with files, directories and drives, on Windows and on its stand-in alike.
#include <gtest/gtest.h>

#include <cctype>
#include <cerrno>
#include <cstring>
#include <functional>
#include <set>

#include "Testing.h"

namespace corvane {
namespace {

using testing::contentOf;
using testing::listing;
using testing::Scratch;

bool opens(const std::string& path, DWORD access, DWORD disposition) {
    return static_cast<bool>(FileGuard(CreateFileA(path.c_str(), access, 0, nullptr, disposition,
                                                   FILE_ATTRIBUTE_NORMAL, nullptr)));
}

bool finds(const std::string& pattern) {
    WIN32_FIND_DATAA data;
    return static_cast<bool>(FindGuard(FindFirstFileA(pattern.c_str(), &data)));
}

bool namesTempFile(const std::string& directory) {
    char name[MAX_PATH];
    return GetTempFileNameA(directory.c_str(), "LRE", 0, name) != 0;
}

TEST(Files, FailuresHaveWindowsCodes) {
    const Scratch scratch;
    scratch.file("file", "x");
    scratch.file("locked");
    scratch.directory("full");
    scratch.file("full\\inner");
    ASSERT_TRUE(SetFileAttributesA(scratch.path("locked").c_str(), FILE_ATTRIBUTE_READONLY));
    const auto attributes = [](const std::string& path) {
        return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
    };
    const auto remove = [](const std::string& path) { return DeleteFileA(path.c_str()) != FALSE; };
    const auto removeDirectory = [](const std::string& path) {
        return RemoveDirectoryA(path.c_str()) != FALSE;
    };
    const auto makeDirectory = [](const std::string& path) {
        return CreateDirectoryA(path.c_str(), nullptr) != FALSE;
    };
    const auto read = [](const std::string& path) {
        return opens(path, GENERIC_READ, OPEN_EXISTING);
    };
    const auto createNew = [](const std::string& path) {
        return opens(path, GENERIC_WRITE, CREATE_NEW);
    };
    const struct {
        const char* name;
        std::function<bool(const std::string&)> call;
        const char* path;
        DWORD code;
    } cases[] = {
        {"attributes of nothing", attributes, "no", ERROR_FILE_NOT_FOUND},
        {"attributes in no directory", attributes, "no\\no", ERROR_PATH_NOT_FOUND},
        {"attributes under a file", attributes, "file\\no", ERROR_PATH_NOT_FOUND},
        {"delete nothing", remove, "no", ERROR_FILE_NOT_FOUND},
        {"delete in no directory", remove, "no\\no", ERROR_PATH_NOT_FOUND},
        {"delete a directory", remove, "full", ERROR_ACCESS_DENIED},
        {"delete a read-only file", remove, "locked", ERROR_ACCESS_DENIED},
        {"remove nothing", removeDirectory, "no", ERROR_FILE_NOT_FOUND},
        {"remove in no directory", removeDirectory, "no\\no", ERROR_PATH_NOT_FOUND},
        {"remove a file", removeDirectory, "file", ERROR_DIRECTORY},
        {"remove a full directory", removeDirectory, "full", ERROR_DIR_NOT_EMPTY},
        {"make a directory again", makeDirectory, "full", ERROR_ALREADY_EXISTS},
        {"make a directory over a file", makeDirectory, "file", ERROR_ALREADY_EXISTS},
        {"make a directory in none", makeDirectory, "no\\no", ERROR_PATH_NOT_FOUND},
        {"open nothing", read, "no", ERROR_FILE_NOT_FOUND},
        {"open in no directory", read, "no\\no", ERROR_PATH_NOT_FOUND},
        {"open a directory", read, "full", ERROR_ACCESS_DENIED},
        {"create what is there", createNew, "file", ERROR_FILE_EXISTS},
        {"create in no directory", createNew, "no\\no", ERROR_PATH_NOT_FOUND},
        {"list no directory", finds, "no\\*", ERROR_PATH_NOT_FOUND},
        {"list what doesn't match", finds, "full\\z*", ERROR_FILE_NOT_FOUND},
        {"list without a pattern", finds, "full\\", ERROR_FILE_NOT_FOUND},
        {"temporary name in no directory", namesTempFile, "no", ERROR_DIRECTORY},
        {"temporary name in a file", namesTempFile, "file", ERROR_DIRECTORY},
    };
    for (const auto& row : cases) {
        SetLastError(NO_ERROR);
        EXPECT_FALSE(row.call(scratch.path(row.path))) << row.name;
        EXPECT_EQ(GetLastError(), row.code) << row.name;
    }
    SetLastError(NO_ERROR);
    EXPECT_EQ(GetFileAttributesA(""), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
}

TEST(Files, AttributesTellDirectoryAndReadOnly) {
    const Scratch scratch;
    const std::string file = scratch.file("file");
    const DWORD told = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
    EXPECT_EQ(GetFileAttributesA(scratch.path().c_str()) & told, DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_EQ(GetFileAttributesA((scratch.path() + "\\").c_str()) & told,
              DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_EQ(GetFileAttributesA(file.c_str()) & told, 0u);
    ASSERT_TRUE(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(GetFileAttributesA(file.c_str()) & told, DWORD{FILE_ATTRIBUTE_READONLY});
    ASSERT_TRUE(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_TRUE(DeleteFileA(file.c_str()));
    // Dots are resolved in the text, whether or not their directories are there.
    EXPECT_NE(GetFileAttributesA(scratch.path("no\\..\\.").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(Files, ListingsAreCompleteAndEndWithTheirCode) {
    const Scratch scratch;
    scratch.file("a.txt");
    scratch.file("b.bin");
    scratch.file("c d.txt");
    scratch.directory("sub");
    EXPECT_EQ(listing(scratch.path("*")),
              (std::vector<std::string>{"a.txt", "b.bin", "c d.txt", "sub\\"}));
    EXPECT_EQ(listing(scratch.path("*.*")).size(), 4u);
    EXPECT_EQ(listing(scratch.path("*.txt")), (std::vector<std::string>{"a.txt", "c d.txt"}));
    EXPECT_EQ(listing(scratch.path("?.b?n")), (std::vector<std::string>{"b.bin"}));
    WIN32_FIND_DATAA data;
    const FindGuard find(FindFirstFileA(scratch.path("*").c_str(), &data));
    std::multiset<std::string> all{data.cFileName};
    while (FindNextFileA(find.get(), &data)) {
        all.insert(data.cFileName);
    }
    EXPECT_EQ(GetLastError(), DWORD{ERROR_NO_MORE_FILES});
    EXPECT_EQ(all.count("."), 1u);
    EXPECT_EQ(all.count(".."), 1u);
    EXPECT_FALSE(FindClose(INVALID_HANDLE_VALUE));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_HANDLE});
}

TEST(Files, TemporaryNamesAreFreeAndCreated) {
    char root[MAX_PATH];
    const DWORD length = GetTempPathA(MAX_PATH, root);
    EXPECT_EQ(length, std::strlen(root));
    EXPECT_EQ(root[length - 1], '\\');
    EXPECT_EQ(GetTempPathA(0, nullptr), length + 1);
    EXPECT_EQ(GetTempPathA(length, root), length + 1);

    const Scratch scratch;
    std::set<std::string> names;
    for (int i = 0; i < 20; ++i) {
        char path[MAX_PATH];
        // A separator at the end isn't doubled.
        const std::string directory = scratch.path() + (i % 2 != 0 ? "\\" : "");
        const UINT number = GetTempFileNameA(directory.c_str(), "LREX", 0, path);
        ASSERT_NE(number, 0u);
        const std::string name = std::string(path).substr(scratch.path().size() + 1);
        ASSERT_TRUE(name.starts_with("LRE") && name.ends_with(".tmp")) << name;
        const std::string digits = name.substr(3, name.size() - 7);
        EXPECT_EQ(std::stoul(digits, nullptr, 16), number);
        EXPECT_LE(digits.size(), 4u);
        names.insert(name);
    }
    EXPECT_EQ(names.size(), 20u);
    EXPECT_EQ(listing(scratch.path("*")).size(), 20u);
    char path[MAX_PATH];
    EXPECT_EQ(GetTempFileNameA(scratch.path().c_str(), "LRE", 0x1AB, path), 0x1ABu);
    EXPECT_EQ(GetFileAttributesA(path), INVALID_FILE_ATTRIBUTES);
}

TEST(Files, SharingAndCreation) {
    const Scratch scratch;
    const std::string path = scratch.path("shared");
    const auto open = [&](DWORD access, DWORD share, DWORD disposition) {
        SetLastError(NO_ERROR);
        return FileGuard(CreateFileA(path.c_str(), access, share, nullptr, disposition,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
    };
    {
        const FileGuard alone = open(GENERIC_READ | GENERIC_WRITE, 0, OPEN_ALWAYS);
        ASSERT_TRUE(alone);
        EXPECT_EQ(GetLastError(), DWORD{NO_ERROR});
        EXPECT_FALSE(open(GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING));
        EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
    }
    FileGuard shared = open(GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    ASSERT_TRUE(shared);
    EXPECT_TRUE(open(GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING));
    EXPECT_FALSE(open(GENERIC_READ, 0, OPEN_EXISTING));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_FALSE(DeleteFileA(path.c_str()));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
    shared.reset();
    EXPECT_TRUE(DeleteFileA(path.c_str()));
}

TEST(Files, ExistingFilesAreReportedAndTruncatedAsAsked) {
    const Scratch scratch;
    const std::string path = scratch.file("old", "content");
    SetLastError(NO_ERROR);
    EXPECT_TRUE(opens(path, GENERIC_WRITE, OPEN_ALWAYS));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(contentOf(path), "content");
    EXPECT_TRUE(opens(path, GENERIC_WRITE, CREATE_ALWAYS));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(contentOf(path), "");
}

TEST(Files, MappingGrowsAndTheEndCutsAgain) {
    const Scratch scratch;
    const std::string path = scratch.file("mapped", "abc");
    FileGuard file(CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                               OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(file);
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
    EXPECT_EQ(SetFilePointer(file.get(), -1, nullptr, FILE_CURRENT), 4u);
    char rest[4];
    DWORD count = 9;
    EXPECT_TRUE(ReadFile(file.get(), rest, sizeof rest, &count, nullptr));
    EXPECT_EQ(count, 1u);
    EXPECT_TRUE(ReadFile(file.get(), rest, sizeof rest, &count, nullptr));
    EXPECT_EQ(count, 0u);
    file.reset();
    EXPECT_EQ(contentOf(path), "abcde");
}

TEST(Files, StreamsOpenByWindowsPaths) {
    const Scratch scratch;
    const std::string path = scratch.file("stream", "one\n");
    {
        const StreamGuard stream(openStream(path.c_str(), "a"));
        ASSERT_TRUE(stream);
        std::fputs("two", stream.get());
    }
    const std::string content = contentOf(path);
    EXPECT_EQ(content, "one\ntwo");
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
    const UINT type = GetDriveTypeA(root.c_str());
    EXPECT_GE(type, UINT{DRIVE_REMOVABLE});
    EXPECT_EQ(GetDriveTypeA(nullptr), type);
    DWORD sectors = 0, bytes = 0, available = 0, total = 0;
    ASSERT_TRUE(GetDiskFreeSpaceA(root.c_str(), &sectors, &bytes, &available, &total));
    EXPECT_GE(sectors * bytes, 512u);
    EXPECT_GE(total, available);
    EXPECT_GT(available, 0u);

    const DWORD size = GetLogicalDriveStringsA(0, nullptr);
    std::string roots(size, 'x');
    EXPECT_EQ(GetLogicalDriveStringsA(size, roots.data()), size - 1);
    EXPECT_EQ(size % 4, 1u);
    EXPECT_NE(roots.find(root + '\0'), std::string::npos);
}

TEST(Drives, UnmappedDriveFails) {
    // No test machine has a drive of this letter.
    DWORD any = 0;
    EXPECT_EQ(GetDriveTypeA("Q:\\"), UINT{DRIVE_NO_ROOT_DIR});
    SetLastError(NO_ERROR);
    EXPECT_FALSE(GetDiskFreeSpaceA("Q:\\", &any, &any, &any, &any));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
}

}  // namespace
}  // namespace corvane
