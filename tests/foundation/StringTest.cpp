// `String`: contents, sharing, growth and failures.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "foundation/String.h"

namespace corvane {
namespace {

constexpr std::size_t npos = String::npos;

std::string text(const String& string) {
    return std::string(string.view());
}

bool sharesBuffer(const String& a, const String& b) {
    return a.cstr() == b.cstr();
}

TEST(StringTest, EmptyWithoutBuffer) {
    const String empty;
    EXPECT_STREQ(empty.cstr(), "");
    EXPECT_EQ(empty.length(), 0u);
    EXPECT_EQ(empty.capacity(), 0u);
    EXPECT_EQ(*empty.charAt(5), '\0');
    EXPECT_EQ(empty.find("a"), npos);
    EXPECT_EQ(empty.find("", 0), 0u);
    EXPECT_EQ(empty.rfind(""), 0u);
    EXPECT_EQ(empty.findLastNotOf(""), npos);
    EXPECT_TRUE(empty == "");
    EXPECT_THROW(empty.at(0), RangeException);
    EXPECT_STREQ(String().mutableAt(0), "");
}

TEST(StringTest, Searches) {
    const String s("a.b.c.");
    EXPECT_EQ(s.find('.'), 1u);
    EXPECT_EQ(s.find('.', 2), 3u);
    EXPECT_EQ(s.find(".c", 0, 1), 1u);
    EXPECT_EQ(s.find(String("c.")), 4u);
    EXPECT_EQ(s.find("", 6), 6u);
    EXPECT_EQ(s.find("", 7), npos);
    EXPECT_EQ(s.find("x", 6), npos);
    EXPECT_EQ(s.rfind('.'), 5u);
    EXPECT_EQ(s.rfind('.', 4), 3u);
    EXPECT_EQ(s.rfind("b."), 2u);
    EXPECT_EQ(s.rfind("", 3), 3u);
    EXPECT_EQ(s.rfind("", 99), 6u);
    EXPECT_EQ(s.findFirstOf("cb"), 2u);
    EXPECT_EQ(s.findFirstOf(""), npos);
    EXPECT_EQ(s.findLastOf("ab"), 2u);
    EXPECT_EQ(s.findLastOf("ab", 1), 0u);
    EXPECT_EQ(s.findFirstNotOf("a."), 2u);
    EXPECT_EQ(s.findFirstNotOf("", 3), 3u);
    EXPECT_EQ(s.findFirstNotOf("", 6), npos);
    EXPECT_EQ(s.findLastNotOf(".c"), 2u);
    EXPECT_EQ(s.findLastNotOf(""), 5u);
}

TEST(StringTest, CapacityFollowsTheGrowthRule) {
    EXPECT_EQ(String(std::size_t{31}, 'x').capacity(), 31u);
    EXPECT_EQ(String(std::size_t{32}, 'x').capacity(), 63u);

    String s(std::size_t{31}, 'x');
    s.append('y');
    EXPECT_EQ(s.capacity(), 63u);

    // An assignment gives up a large buffer and keeps a small one.
    s.assign("12345");
    EXPECT_EQ(s.capacity(), 31u);
    const char* const small = s.cstr();
    s.assign("1234567");
    EXPECT_EQ(s.cstr(), small);
    EXPECT_EQ(s.capacity(), 31u);
    s.assign("");
    EXPECT_EQ(s.capacity(), 0u);

    // Erasing keeps it.
    String erased(std::size_t{40}, 'x');
    erased.erase();
    EXPECT_TRUE(erased.empty());
    EXPECT_EQ(erased.capacity(), 63u);
}

TEST(StringTest, WholeCopiesShareAndPartsDoNot) {
    const String original("some text");
    String copy(original);
    EXPECT_TRUE(sharesBuffer(original, copy));
    copy.append('!');
    EXPECT_EQ(text(original), "some text");
    EXPECT_EQ(text(copy), "some text!");

    EXPECT_FALSE(sharesBuffer(original, original.substr(0, 4)));
    EXPECT_TRUE(sharesBuffer(original, original.substr(0, 99)));
    EXPECT_EQ(String(String()).capacity(), 0u);

    // Each way of changing a shared string leaves the other owner alone.
    String changed(original);
    changed.erase(4);
    EXPECT_EQ(text(changed), "some");
    changed = original;
    changed.insert(0, "my ");
    EXPECT_EQ(text(changed), "my some text");
    changed = original;
    changed.replace(0, 4, original);
    EXPECT_EQ(text(changed), "some text text");
    changed = original;
    *changed.mutableAt(0) = 'S';
    EXPECT_EQ(text(changed), "Some text");
    changed = original;
    changed.assign(3, '-');
    EXPECT_EQ(text(changed), "---");
    changed = original;
    changed.erase();
    EXPECT_EQ(changed.capacity(), 0u) << "an emptied share keeps no buffer";
    EXPECT_EQ(text(original), "some text");
}

TEST(StringTest, SharingStopsAt255Owners) {
    const String original("shared");
    std::vector<String> copies(300);
    for (String& copy : copies)
        copy = original;
    int sharing = 0;
    for (const String& copy : copies)
        sharing += sharesBuffer(copy, original);
    EXPECT_EQ(sharing, 254);
    for (std::size_t i = 254; i < copies.size(); ++i)
        EXPECT_FALSE(sharesBuffer(copies[i], original));
    // A share given back can be taken again.
    copies[0] = "own";
    EXPECT_TRUE(sharesBuffer(String(original), original));
}

TEST(StringTest, FrozenBuffersAreCopiedAndGrowthThaws) {
    String s("abc");
    char* const inside = s.mutableAt(0);
    const String copy(s);
    EXPECT_FALSE(sharesBuffer(s, copy));
    *inside = 'X';
    EXPECT_EQ(text(s), "Xbc");
    EXPECT_EQ(text(copy), "abc");
    EXPECT_EQ(*s.mutableAt(3), '\0');
    EXPECT_STREQ(s.mutableAt(4), "");

    s.append(std::string(100, 'z').c_str());
    EXPECT_TRUE(sharesBuffer(s, String(s)));
}

TEST(StringTest, PositionsBeyondTheTextRaiseAndChangeNothing) {
    String s("abc");
    const String other("xyz");
    EXPECT_EQ(text(s.substr(3)), "");
    EXPECT_THROW(s.substr(4), RangeException);
    EXPECT_THROW(s.assign(other, 4, 1), RangeException);
    EXPECT_THROW(s.append(other, 4, 1), RangeException);
    EXPECT_THROW(s.insert(4, "x"), RangeException);
    EXPECT_THROW(s.erase(4), RangeException);
    EXPECT_THROW(s.replace(4, 0, other), RangeException);
    EXPECT_THROW(s.replace(0, 1, other, 4), RangeException);
    EXPECT_THROW((void)s.compare(4, 1, other), RangeException);
    EXPECT_THROW(s.at(3), RangeException);
    EXPECT_EQ(text(s), "abc");
}

TEST(StringTest, TooLongRaisesBeforeAnythingChanges) {
    String s("abc");
    EXPECT_THROW(s.assign(npos, 'x'), LengthException);
    EXPECT_THROW(s.assign(npos - 1, 'x'), LengthException);
    EXPECT_THROW(s.append("x", npos - 3), LengthException);
    EXPECT_THROW(s.insert(1, "x", npos - 4), LengthException);
    EXPECT_EQ(text(s), "abc");
}

TEST(StringTest, PartsOfItself) {
    String s("0123456789");
    s.assign(s, 2, 5);
    EXPECT_EQ(text(s), "23456");
    s.append(s);
    EXPECT_EQ(text(s), "2345623456");
    s.append(s.cstr() + 8);
    EXPECT_EQ(text(s), "234562345656");
    s.insert(1, s.cstr() + 10, 2);
    EXPECT_EQ(text(s), "25634562345656");
    s.replace(0, 12, s, 12);
    EXPECT_EQ(text(s), "5656");
    s.assign(s.cstr() + 2);
    EXPECT_EQ(text(s), "56");
    s = *&s;
    EXPECT_EQ(text(s), "56");
}

TEST(StringTest, ComparesBytesUnsigned) {
    EXPECT_LT(String("a").compare("b"), 0);
    EXPECT_GT(String("\xE9").compare("z"), 0);
    EXPECT_LT(String("ab").compare("abc"), 0);
    EXPECT_GT(String("abc").compare("ab"), 0);
    EXPECT_NE(String("ABC").compare("abc"), 0);
    EXPECT_EQ(String("xabcx").compare(1, 3, String("abc")), 0);
    EXPECT_EQ(String("xabcx").compare(1, 99, String("zabcx"), 1), 0);
    EXPECT_FALSE(String("a\0b", 3) == String("a\0c", 3));
}

TEST(StringTest, MovesAndSums) {
    String from("moved");
    const char* const buffer = from.cstr();
    String to(std::move(from));
    EXPECT_EQ(to.cstr(), buffer);
    String target("old");
    target = std::move(to);
    EXPECT_EQ(target.cstr(), buffer);
    EXPECT_EQ(text("a" + target + "b"), "amovedb");
}

// Every operation against std::string, over random contents and positions.
class ModelTest : public ::testing::Test {
  protected:
    std::size_t below(std::size_t bound) {
        return std::uniform_int_distribution<std::size_t>(0, bound)(random_);
    }
    std::string randomText() {
        std::string result(below(40), ' ');
        for (char& c : result)
            c = static_cast<char>('a' + below(3));
        return result;
    }
    void change(String& string, std::string& model) {
        const std::string piece = randomText();
        const std::size_t pos = below(model.size());
        const std::size_t count = below(20);
        switch (below(6)) {
            case 0:
                string.append(piece.c_str());
                model.append(piece);
                break;
            case 1:
                string.insert(pos, piece.c_str());
                model.insert(pos, piece);
                break;
            case 2:
                string.erase(pos, count);
                model.erase(pos, count);
                break;
            case 3:
                string.replace(pos, count, piece.c_str());
                model.replace(pos, count, piece);
                break;
            case 4:
                string.assign(string, pos, count);
                model = model.substr(pos, count);
                break;
            default:
                string = piece.c_str();
                model = piece;
        }
    }

    std::mt19937 random_{20260101};
};

TEST_F(ModelTest, BehavesAsTheStandardStringDoes) {
    String string;
    std::string model;
    std::vector<std::pair<String, std::string>> owners;
    for (int i = 0; i < 20000; ++i) {
        change(string, model);
        ASSERT_EQ(text(string), model) << "step " << i;
        ASSERT_EQ(string.cstr()[model.size()], '\0');
        const std::string needle = randomText().substr(0, 2);
        const std::size_t pos = below(model.size() + 2);
        ASSERT_EQ(string.find(needle.c_str(), pos), model.find(needle, pos));
        ASSERT_EQ(string.rfind(needle.c_str(), pos), model.rfind(needle, pos));
        if (i % 10 == 0)
            owners.emplace_back(string, model);
        if (i % 200 == 0) {
            for (const auto& [owner, expected] : owners)
                ASSERT_EQ(text(owner), expected) << "an older copy changed";
            owners.clear();
        }
    }
}

}  // namespace
}  // namespace corvane
