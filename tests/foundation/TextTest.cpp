// Lines, numbers, suffixes, words and arguments.
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>

#include "foundation/ArgumentText.h"
#include "foundation/BigEndian.h"
#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"
#include "foundation/VersionOrder.h"

namespace corvane {
namespace {

std::string text(const String& string) {
    return std::string(string.view());
}

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File fileWith(std::string_view content) {
    File file(std::tmpfile(), std::fclose);
    std::fwrite(content.data(), 1, content.size(), file.get());
    std::rewind(file.get());
    return file;
}

std::string messageOf(auto&& action) {
    try {
        action();
    } catch (const LauncherException& failure) {
        return text(failure.message);
    }
    return "no exception";
}

TEST(TextTest, TrimAndSuffix) {
    const std::pair<const char*, const char*> cases[] = {
        {" \t\r\n", ""}, {"", ""}, {" a b ", "a b"}, {"\na\v", "a\v"}};
    for (const auto& [in, out] : cases) {
        String s(in);
        trim(s);
        EXPECT_EQ(text(s), out) << in;
    }
    EXPECT_EQ(endsWith("abcabc", "abc"), 3u);
    EXPECT_EQ(endsWith("abc", "b"), String::npos);
    EXPECT_EQ(endsWith("bc", "abc"), String::npos);
    EXPECT_FALSE(isWhite('\0'));
    for (const auto& [before, after] : {std::pair("", ""), {"C:", "C:\\"}, {"C:\\", "C:\\"}}) {
        String path(before);
        ensureTrailingSeparator(path);
        EXPECT_EQ(text(path), after);
    }
}

TEST(TextTest, Numbers) {
    EXPECT_EQ(text(decimalText(0)), "0");
    EXPECT_EQ(text(decimalText(-2147483647 - 1)), "-2147483648");
    std::int32_t number = 7;
    EXPECT_FALSE(scanNumber("", number));
    EXPECT_FALSE(scanNumber("x1", number));
    EXPECT_EQ(number, 7);
    const struct {
        const char* in;
        std::int32_t wide;
        std::int16_t narrow;
    } cases[] = {{" -3x", -3, -3},
                 {"+7", 7, 7},
                 {"0x10", 0, 0},
                 {"99999999999999999999", 2147483647, 32767},
                 {"-70000", -70000, -32768}};
    for (const auto& [in, wide, narrow] : cases) {
        std::int16_t small = 0;
        EXPECT_TRUE(scanNumber(in, number) && scanNumber(in, small));
        EXPECT_EQ(number, wide) << in;
        EXPECT_EQ(small, narrow) << in;
    }
}

TEST(TextTest, LinesOfFilesAndTextsAreTheSame) {
    const std::string longWord(1000, 'w');
    const std::string content = " one \r\r\n\n\rtwo\rhalves\n" + longWord + "\n last";
    const std::string expected[] = {"one", "", "twohalves", longWord, "last"};
    const File file = fileWith(content);
    const String whole(content.c_str());
    std::size_t pos = 0;
    for (const std::string& line : expected) {
        String fromFile;
        String fromText;
        EXPECT_FALSE(atEnd(file.get()));
        readLine(file.get(), fromFile);
        readLine(whole, pos, fromText);
        EXPECT_EQ(text(fromFile), line);
        EXPECT_EQ(text(fromText), line);
    }
    EXPECT_TRUE(atEnd(file.get()));
    writeLine(file.get(), "more");
    EXPECT_EQ(std::ftell(file.get()), static_cast<long>(content.size()) + 5);
    EXPECT_GE(pos, whole.length());
    String untouched(" kept ");
    readLine(whole, pos, untouched);
    EXPECT_EQ(text(untouched), " kept ");
}

TEST(TextTest, BigEndianIntegers) {
    const File file = fileWith(std::string_view("\xCA\x82\xCA\x82\xFF\xFE\x01", 7));
    EXPECT_EQ(readUInt32BE(file.get(), "x"), 0xCA82CA82u);
    EXPECT_EQ(readUInt16BE(file.get(), "x"), 0xFFFEu);
    EXPECT_EQ(messageOf([&] { readUInt16BE(file.get(), "too short"); }), "too short");
}

TEST(ArgumentTextTest, Words) {
    const String line(" a\v\"b c\"\n");
    std::size_t pos = 0;
    bool noMore = true;
    for (const char* word : {"a", "\"b", "c\""}) {
        EXPECT_EQ(text(nextToken(line, pos, noMore)), word);
        EXPECT_FALSE(noMore);
    }
    EXPECT_EQ(text(nextToken(line, pos, noMore)), "");
    EXPECT_TRUE(noMore);
    pos = 0;
    nextToken("end", pos, noMore);
    EXPECT_EQ(pos, 4u) << "one past the end of the text";
}

TEST(ArgumentTextTest, QuotedAndPlainArguments) {
    const struct {
        const char* in;
        const char* out;
        std::size_t next;
    } good[] = {
        {"\"a\"\"b\"", "a\"b", String::npos}, {"\"a\" tail", "a", 3},  {"\"\"", "", String::npos},
        {"\"\"\"\"", "\"", String::npos},     {"\"\"\"\" x", "\"", 4},
    };
    for (const auto& [in, out, next] : good) {
        std::size_t pos = 1;
        EXPECT_EQ(text(readArgument(in, pos, true)), out) << in;
        EXPECT_EQ(pos, next) << in;
    }
    const std::pair<const char*, const char*> bad[] = {
        {"\"abc\"\"", "-1"}, {"\"abc", "1"}, {"\"", "1"}, {"\"a\"\"b", "4"}};
    for (const auto& [in, position] : bad) {
        std::size_t pos = 1;
        EXPECT_EQ(messageOf([&] { readArgument(in, pos, true); }),
                  std::string("Expected double quote to end argument near ") + position)
            << in;
    }
    for (std::size_t pos : {0u, 6u}) {
        EXPECT_EQ(text(readArgument("plain \"text\"", pos, false)), "plain");
        EXPECT_EQ(pos, 5u);
        EXPECT_EQ(text(readArgument("plain", pos, false)), "plain");
        EXPECT_EQ(pos, String::npos);
    }
}

TEST(VersionOrderTest, NumbersAreComparedOneByOne) {
    // Each is older than those behind it; those in one line are the same.
    const std::vector<const char*> ascending[] = {
        {"", "none"},
        {"1.8.0_51", "1.8.0-51"},
        {"1.8.0_402-ea"},
        {"1.8.0_402"},
        {"1.8.0_402-b06"},
        {"9-internal", "9-EA"},
        {"9.0.0-Beta"},
        {"9"},
        {"17-ea+8"},
        {"17-ea+10"},
        {"17", "17.0.0"},
        {"17.0.9"},
        {"17.0.10"},
        {"17.0.10+7", "17.0.10+7-LTS"},
        {"20260101123456789012345"},
        {"20260101123456789012346", "020260101123456789012346"},
    };
    for (const auto& older : ascending) {
        for (const auto& newer : ascending) {
            for (const char* const a : older) {
                for (const char* const b : newer) {
                    const int order = compareVersions(a, b);
                    EXPECT_EQ(order < 0, &older < &newer) << a << " and " << b;
                    EXPECT_EQ(order > 0, &older > &newer) << a << " and " << b;
                }
            }
        }
    }
}

}  // namespace
}  // namespace corvane
