// The index: its bytes, its reading, and files that lie.
#include <gtest/gtest.h>

#include "launcherfile/LauncherFile.h"
#include "launcherfile/LauncherKind.h"
#include "platform/Platform.h"
#include "support/Payload.h"

namespace corvane {
namespace {

using test::EmbeddedFile;
using test::failureOf;
using test::text;

class IndexTest : public ::testing::Test {
  protected:
    bool read(const std::string& bytes, std::int32_t trailerOffset = 0) {
        files.clear();
        run.scratch.write("f", bytes);
        const StreamGuard stream(openStream(run.scratch.path("f").cstr(), "rb"));
        return files.readIndex(stream.get(), trailerOffset);
    }

    test::LauncherRun run;
    LauncherFile files;
};

TEST_F(IndexTest, TheFormatIsWrittenAndReadByteForByte) {
    const std::string program(4096, 'p');
    const std::string content(32, 'c');
    const std::string bytes =
        test::launcherBytes(0, {{FileType::instructions, "a.tag", content, 1}}, program);
    const std::string entry("\0\0\0\0\1\0\0\0\x20\0\0\x10\0\0\5a.tag\0", 21);
    const std::string trailer("\0\0\0\x10\x20\xCA\x82\xCA\x82", 9);
    EXPECT_EQ(bytes, program + content + std::string("\0\0\0\1", 4) + entry + trailer);

    EXPECT_TRUE(read(bytes));
    ASSERT_EQ(files.count(), 1);
    EXPECT_EQ(files.at(0)->offset, 4096);
    EXPECT_EQ(files.at(0)->length, 32);
    EXPECT_EQ(run.log(),
              "------------------\nfile type: 0\n  file id: 1\n  length: 32\n  offset: 4096\n"
              "  file name: a.tag\n");
}

TEST_F(IndexTest, EntriesKeepTheirOrderAndAreFound) {
    EXPECT_TRUE(read(test::launcherBytes(
        1, {{FileType::classpathFile, "", "jar", 7},
            {FileType::jvmInstaller, "inst.exe", "x", 8, pack::Decompressed{3, 1000}},
            {FileType::classpathFile, "b.jar", "", 8}})));
    ASSERT_EQ(files.count(), 3);
    EXPECT_EQ(text(files.at(2)->name), "b.jar");
    EXPECT_EQ(files.findById(8), files.at(1));
    EXPECT_EQ(files.findById(9), nullptr);
    EXPECT_EQ(files.findByType(FileType::classpathFile), files.at(0));
    EXPECT_EQ(files.findByType(FileType::jvmMessage), nullptr);
    EXPECT_EQ(files.at(1)->decompressedFileCount, 3);
    EXPECT_EQ(files.at(1)->decompressedSize, 1000);
}

TEST_F(IndexTest, WithoutATrailerItIsEmpty) {
    EXPECT_FALSE(read("just a program, nothing appended"));
    EXPECT_FALSE(read(test::launcherBytes(0, {}) + std::string(100, 'x')));
    EXPECT_TRUE(read(test::launcherBytes(0, {}) + std::string(100, 'x'), -100));
    EXPECT_EQ(files.count(), 0);
    EXPECT_EQ(failureOf([&] { read("1234567"); }), "Invalid launcher format.");
}

std::string integer(std::uint32_t value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<char>(value >> shift & 0xFF));
    return bytes;
}

// A file that consists of an index, with its count in front, and a trailer.
std::string withIndex(const std::string& index, std::uint32_t indexOffset = 0) {
    return index + std::string(1, '\0') + integer(indexOffset) + integer(identification);
}

// Others are in tests/endtoend/cases/damaged_launcher.
TEST_F(IndexTest, AFileThatLiesGetsAClearError) {
    const std::string one = integer(1);
    const std::string head = std::string(1, '\0') + integer(1);
    const std::string name("\0\1n", 3);
    const struct {
        const char* what;
        std::string bytes;
        const char* message;
    } cases[] = {
        {"index cut short", withIndex("", 8), "Unable to read the file count."},
        {"two thousand million files, the first of which is none",
         withIndex(integer(2000000000) + "\x09"), "Invalid file type in file index."},
        {"an index in front of the file", withIndex(one, 0x80000000), "Invalid file index offset."},
        {"a negative length", withIndex(one + head + integer(0x80000000)),
         "Invalid file length in file index."},
        {"a negative count", withIndex(integer(0x80000000)), "Invalid file count in file index."},
        {"a negative offset", withIndex(one + head + integer(0) + integer(0xFFFFFFFF) + name),
         "Invalid offset to file bytes in file index."},
        {"a negative name length",
         withIndex(one + head + integer(0) + integer(0) + "\x80\x01 and more text"),
         "Unable to load the string value."},
    };
    for (const auto& [what, bytes, message] : cases)
        EXPECT_EQ(failureOf([&] { read(bytes); }), message) << what;
}

TEST_F(IndexTest, MissingFieldsAreNamed) {
    const std::string whole = test::launcherBytes(
        0, {{FileType::jvmInstaller, "name", "", 1, pack::Decompressed{1, 2}}}, "");
    const struct {
        std::size_t length;
        const char* message;
    } cases[] = {
        {0, "Invalid file type in file index."},  {3, "Unable to load file id."},
        {8, "Unable to load file length."},       {12, "Unable to load offset to file bytes."},
        {14, "Unable to load the string value."}, {21, "Unable to load decompressed file count."},
        {27, "Unable to load decompressed size."}};
    for (const auto& [length, message] : cases) {
        const String path = run.scratch.write("entry", whole.substr(4, length));
        const StreamGuard stream(openStream(path.cstr(), "rb"));
        FileIndexEntry reader;
        EXPECT_EQ(failureOf([&] { reader.read(stream.get()); }), message) << length;
    }
}

}  // namespace
}  // namespace corvane
