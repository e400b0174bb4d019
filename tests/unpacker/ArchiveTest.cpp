// The names, links, table and machine code of an archive.
#include <gtest/gtest.h>

#include <random>

#include "support/TestContext.h"
#include "unpacker/ArchiveNames.h"
#include "unpacker/ArchiveTable.h"
#include "unpacker/CallFilter.h"

using namespace corvane;

TEST(ArchiveNames, stayBelowTheDirectoryOnEverySystem) {
    for (const char* name : {"a", "lib/server/jvm.dll", "a b", ".hidden", "a/..b", "com", "comics"})
        EXPECT_TRUE(isArchiveName(name)) << name;
    for (const char* name :
         {"",         "/a",  "a/",        "a//b", "..",       "a/../b",   ".",    "a/.",
          "a.",       "a ",  "c:",        "c:/a", "a\\b",     "a:s",      "a\nb", "a\x7F",
          "\xC3\xA4", "nul", "a/NUL.txt", "Com1", "lpt9.a.b", "con .txt", "a*"})
        EXPECT_FALSE(isArchiveName(name)) << name;
    EXPECT_TRUE(isArchiveName(std::string(240, 'a')));
    EXPECT_FALSE(isArchiveName(std::string(241, 'a')));
}

TEST(ArchiveNames, linksStayInTheArchive) {
    EXPECT_TRUE(isArchiveLink("a/b/c", "../../d"));
    EXPECT_TRUE(isArchiveLink("a", "b/c"));
    for (const char* target : {"../../../d", "/d", "", "..", "d/../e", "d/../../../e", "./d"})
        EXPECT_FALSE(isArchiveLink("a/b/c", target)) << target;
}

TEST(ArchiveTable, isRefusedWhereItCannotBe) {
    const std::string end("\1\0\3jvm\0\0\0\5", 10);
    const auto check = [&](const std::string& bytes, std::uint32_t contentSize) {
        auto copy = std::make_unique<char[]>(bytes.size());
        bytes.copy(copy.get(), bytes.size());
        return test::failureOf([&] {
            ArchiveTable(std::move(copy), static_cast<std::uint32_t>(bytes.size()), contentSize);
        });
    };
    EXPECT_EQ(check(end, 5), "no failure");
    const std::string damaged = "The Java runtime is damaged: ";
    EXPECT_EQ(check(end, 6), damaged + "the files' sizes don't add up");
    // Sizes that make up the total only when their sum is cut to 32 bits.
    const std::string large("\1\0\1a\xFF\xFF\xFF\xFF\1\0\1b\0\0\0\1", 16);
    EXPECT_EQ(check(large + end, 5), damaged + "the files' sizes don't add up");
    EXPECT_EQ(check("", 0), damaged + "it doesn't end with the jvm file");
    EXPECT_EQ(check(end + std::string("\0\0\1a", 4), 5),
              damaged + "it doesn't end with the jvm file");
    EXPECT_EQ(check(std::string("\4\0\1a", 4) + end, 5), damaged + "an entry of an unknown kind");
    EXPECT_EQ(check(std::string("\0\0\2..", 5) + end, 5), damaged + "no name for a file: ..");
    EXPECT_EQ(check(std::string("\3\0\1a\0\4../b", 10) + end, 5),
              damaged + "a link that leads elsewhere: a");
    for (std::size_t size = 1; size < end.size(); ++size)
        EXPECT_EQ(check(end.substr(0, size), 5), damaged + "its table is cut");
}

TEST(CallFilter, anyBytesComeBack) {
    std::mt19937 random(1);
    // Few different bytes, so that codes and distances stand in each other in all ways.
    constexpr unsigned char bytes[] = {0xE8, 0xE9, 0x48, 0x4C, 0x8B, 0x8D, 0x05, 0x00, 0xFF, 0x7F};
    for (int round = 0; round < 2000; ++round) {
        std::vector<unsigned char> block(random() % 60);
        for (unsigned char& byte : block)
            byte = bytes[random() % std::size(bytes)];
        std::vector<unsigned char> copy = block;
        const auto position = static_cast<std::uint32_t>(random());
        filterCalls(copy.data(), copy.size(), position);
        restoreCalls(copy.data(), copy.size(), position);
        ASSERT_EQ(copy, block);
    }
}
