// What the windowed front end decides, without a window.
#include <gtest/gtest.h>

#include "frontends/windowed/Decisions.h"

namespace corvane {
namespace {

TEST(DecisionsTest, OnlyKindNullHasTheTallDialog) {
    EXPECT_EQ(dialogFor(0), DialogId::tall);
    for (const std::int32_t kind : {-1, 1, 2, 255})
        EXPECT_EQ(dialogFor(kind), DialogId::compact) << kind;
}

TEST(DecisionsTest, TheBarWrapsAtAHundred) {
    const struct {
        std::int32_t current;
        std::int32_t delta;
        std::int32_t after;
    } steps[] = {{0, 5, 5},    {95, 5, 0},   {99, 5, 4},  {94, 5, 99},
                 {0, 250, 50}, {50, -5, 45}, {0, -1, 95}, {99, 2147483647, 46}};
    for (const auto& step : steps)
        EXPECT_EQ(positionAfterStep(step.current, step.delta), step.after)
            << step.current << " + " << step.delta;
    const std::int32_t shown[][2] = {{0, 0}, {99, 99}, {100, 0}, {101, 1}, {-5, -5}, {-100, 0}};
    for (const auto& [position, expected] : shown)
        EXPECT_EQ(positionShown(position), expected) << position;
}

TEST(DecisionsTest, WhereTheDialogStands) {
    const Position position = centred({1000, 700}, {300, 200});
    EXPECT_EQ(position.x, 350);
    EXPECT_EQ(position.y, 250);
}

TEST(DecisionsTest, TheHidingOfTheDialog) {
    EXPECT_EQ(hideDelayMs(-32768), 0u);
    EXPECT_EQ(hideDelayMs(0), 0u);
    EXPECT_EQ(hideDelayMs(1), 1000u);
    EXPECT_EQ(hideDelayMs(32767), 32767000u);
}

TEST(DecisionsTest, OnlyARealEndOfTheSessionCounts) {
    const std::uint32_t logOff = 0x80000000;
    EXPECT_TRUE(sessionEnds(true, 0));
    EXPECT_TRUE(sessionEnds(true, logOff));
    EXPECT_FALSE(sessionEnds(false, 0));
    EXPECT_FALSE(sessionEnds(true, 1)) << "only this program is to close";
}

TEST(DecisionsTest, ABoxFitsTheScreen) {
    const auto lines = [](int first, int last) {
        std::string text;
        for (int i = first; i <= last; ++i)
            text += std::to_string(i) + "\n";
        return text;
    };
    const std::string wide = "\xC3\xA4";
    std::string letters;
    for (int i = 0; i < 200; ++i)
        letters += wide;
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"one", "one"},
        {"one\n", "one\n"},
        {lines(1, 25), lines(1, 25)},
        {lines(1, 26), lines(1, 15) + "... (1)\n" + lines(17, 26)},
        {lines(1, 79) + "80", lines(1, 15) + "... (55)\n" + lines(71, 79) + "80"},
        {letters, letters},
        {letters + wide + "\nb", letters + "...\nb"},
    };
    for (const auto& [text, shown] : cases)
        EXPECT_EQ(boxText(text.c_str()).view(), shown);
}

TEST(DecisionsTest, OnlyAddressesOfTheWebAreOpened) {
    for (const char* const address : {"https://example.org/java?a=1&b=%20#c", "http://example.org"})
        EXPECT_TRUE(isWebAddress(address)) << address;
    for (const char* const address :
         {"", "C:\\a.exe", "file:///C:/a.exe", "javascript:1", "example.org", " https://a",
          "https://a b", "https://a\"b", "https://a</a>", "https://a\x7F"})
        EXPECT_FALSE(isWebAddress(address)) << address;
    EXPECT_TRUE(readsFromTheRight("\u200F\u200Fa"));
    EXPECT_FALSE(readsFromTheRight("a\u200F\u200F"));
}

}  // namespace
}  // namespace corvane
