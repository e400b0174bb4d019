// `String`: contents, sharing, growth and failures.
#include <gtest/gtest.h>

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
    EXPECT_EQ(*empty.charAt(5), '\0');
    EXPECT_TRUE(empty == "");
    EXPECT_EQ(String(empty).capacity(), 0u);
    EXPECT_STREQ(String().mutableAt(0), "");
}

TEST(StringTest, CapacityFollowsTheGrowthRule) {
    String s(std::size_t{31}, 'x');
    EXPECT_EQ(s.capacity(), 31u);
    s.append('y');
    EXPECT_EQ(s.capacity(), 63u);
    s.erase();
    EXPECT_EQ(s.capacity(), 63u) << "erasing keeps the buffer";
    s.assign("12345");
    EXPECT_EQ(s.capacity(), 31u) << "an assignment gives up a large buffer";
    const char* const small = s.cstr();
    s.assign("1234567");
    EXPECT_EQ(s.cstr(), small) << "and keeps a small one";
    s.assign("");
    EXPECT_EQ(s.capacity(), 0u);
}

TEST(StringTest, WholeCopiesShareAndPartsDoNot) {
    const String original("some text");
    String copy(original);
    EXPECT_TRUE(sharesBuffer(original, copy));
    EXPECT_TRUE(sharesBuffer(original, original.substr(0, 99)));
    EXPECT_FALSE(sharesBuffer(original, original.substr(0, 4)));
    copy.erase();
    EXPECT_EQ(copy.capacity(), 0u) << "an emptied share keeps no buffer";
    EXPECT_EQ(text(original), "some text");
}

TEST(StringTest, SharingStopsAt255Owners) {
    const String original("shared");
    std::vector<String> copies(300, original);
    for (std::size_t i = 0; i < copies.size(); ++i)
        EXPECT_EQ(sharesBuffer(copies[i], original), i < 254) << i;
    // A share given back can be taken again.
    copies[0] = "own";
    EXPECT_TRUE(sharesBuffer(String(original), original));
}

TEST(StringTest, FrozenBuffersAreCopiedAndGrowthThaws) {
    const String former("abc");
    String s(former);
    char* const inside = s.mutableAt(0);
    const String copy(s);
    *inside = 'X';
    EXPECT_EQ(text(s) + text(copy) + text(former), "Xbcabcabc");
    EXPECT_EQ(s.mutableAt(3), s.cstr() + 3);
    EXPECT_STREQ(s.mutableAt(4), "");
    s.append(std::string(100, 'z').c_str());
    EXPECT_TRUE(sharesBuffer(s, String(s)));
}

TEST(StringTest, BadPositionsAndLengthsRaiseAndChangeNothing) {
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
    EXPECT_THROW(s.assign(npos - 1, 'x'), LengthException);
    EXPECT_THROW(s.append("x", npos - 3), LengthException);
    EXPECT_THROW(s.insert(1, "x", npos - 4), LengthException);
    EXPECT_EQ(text(s), "abc");
}

// The buffer goes, moves or is written over while a part of it is still to be read.
TEST(StringTest, PartsOfItself) {
    const std::string letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJ";
    const std::pair<void (*)(String&), std::string> cases[] = {
        {[](String& s) { s.assign(s, 2, 5); }, "cdefg"},
        {[](String& s) { s.assign(s.cstr() + 2); }, letters.substr(2)},
        {[](String& s) { s.append(s.cstr() + 4); }, letters + letters.substr(4)},
        {[](String& s) { s.insert(1, s.cstr() + 3, 2); }, "ade" + letters.substr(1)},
        {[](String& s) { s.replace(0, 12, s, 30); }, "EFGHIJ" + letters.substr(12)},
        {[](String& s) { s = *&s; }, letters}};
    for (const auto& [change, expected] : cases) {
        String s(letters.c_str());
        change(s);
        EXPECT_EQ(text(s), expected);
    }
}

TEST(StringTest, MovesAndSums) {
    String from("moved");
    const char* const buffer = from.cstr();
    String to("old");
    to = std::move(from);
    EXPECT_EQ(to.cstr(), buffer);
    EXPECT_TRUE(from.empty());  // NOLINT: the old text doesn't live on
    EXPECT_EQ(text("a" + String(std::move(to)) + "b"), "amovedb");
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
            c = "ab\xE9"[below(2)];
        return result;
    }
    void change(String& string, std::string& model) {
        const std::string piece = randomText();
        const char* const text = piece.c_str();
        const std::size_t pos = below(model.size()), count = below(20), kind = below(6);
        const auto apply = [&](auto& s) {
            kind == 0   ? s.append(text)
            : kind == 1 ? s.insert(pos, text)
            : kind == 2 ? s.erase(pos, count)
            : kind == 3 ? s.replace(pos, count, text)
            : kind == 4 ? s.assign(s, pos, count)
            : kind == 5 ? s.assign(count, 'a')
                        : s = text;
        };
        apply(string);
        apply(model);
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
        const std::string some = randomText().substr(0, 2);
        const char* const needle = some.c_str();
        const std::size_t pos = below(model.size() + 2);
        ASSERT_EQ(string.find(needle, pos), model.find(some, pos));
        ASSERT_EQ(string.rfind(needle, pos), model.rfind(some, pos));
        ASSERT_EQ(string.findFirstOf(needle, pos), model.find_first_of(some, pos));
        ASSERT_EQ(string.findLastOf(needle, pos), model.find_last_of(some, pos));
        ASSERT_EQ(string.findFirstNotOf(needle, pos), model.find_first_not_of(some, pos));
        ASSERT_EQ(string.findLastNotOf(needle, pos), model.find_last_not_of(some, pos));
        ASSERT_EQ(string.find('a', pos), model.find('a', pos));
        ASSERT_EQ(string.rfind('a', pos), model.rfind('a', pos));
        ASSERT_EQ(string.compare(needle) <=> 0, model.compare(some) <=> 0);
        const std::size_t from = below(model.size());
        ASSERT_EQ(string.compare(from, 2, String(needle)) <=> 0,
                  model.compare(from, 2, some) <=> 0);
        ASSERT_EQ(string == needle, model == some);
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
