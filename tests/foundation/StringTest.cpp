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
    EXPECT_EQ(empty.capacity(), 0u);
    EXPECT_EQ(*empty.charAt(5), '\0');
    EXPECT_TRUE(empty == "");
    EXPECT_FALSE(String("a\0b", 3) == String("a\0c", 3));
    EXPECT_THROW(empty.at(0), RangeException);
    EXPECT_STREQ(String().mutableAt(0), "");
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

    String changed(original);
    *changed.mutableAt(0) = 'S';
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
            c = "ab\xE9"[below(2)];
        return result;
    }
    void change(String& string, std::string& model) {
        const std::string piece = randomText();
        const std::size_t pos = below(model.size());
        const std::size_t count = below(20);
        const auto both = [&](auto&& action) {
            action(string);
            action(model);
        };
        switch (below(6)) {
            case 0:
                return both([&](auto& s) { s.append(piece.c_str()); });
            case 1:
                return both([&](auto& s) { s.insert(pos, piece.c_str()); });
            case 2:
                return both([&](auto& s) { s.erase(pos, count); });
            case 3:
                return both([&](auto& s) { s.replace(pos, count, piece.c_str()); });
            case 4:
                return both([&](auto& s) { s.assign(s, pos, count); });
            case 5:
                return both([&](auto& s) { s.assign(count, 'a'); });
            default:
                return both([&](auto& s) { s = piece.c_str(); });
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
