// Texts of the string table and of the system, and their insertions.
#include <gtest/gtest.h>

#include <cstdlib>

#include "base/Messages.h"
#include "platform/Platform.h"
#include "support/TestContext.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;

class MessagesTest : public ::testing::Test {
  protected:
    test::TestContext run;
};

TEST_F(MessagesTest, LongTextsGrowTheBufferAndMissingOnesAreEmpty) {
    ResourceText loader;
    EXPECT_EQ(loader.size(), 64);
    EXPECT_EQ(loader.load(36), 175);
    EXPECT_EQ(loader.size(), 192);
    EXPECT_EQ(loader.load(31), 64);
    EXPECT_EQ(loader.load(4711), 0);
    EXPECT_STREQ(loader.text(), "");
    EXPECT_EQ(text(loadMessage(MessageId::extractFailed)),
              "Unable to extract embedded files from the launcher. ");
}

// Characters of several bytes make the system cut a text before the buffer is full. (On Windows the
// user's language stays, whatever the variable says.)
TEST_F(MessagesTest, TextsAreWholeInEveryLanguage) {
    const char* const found = std::getenv("LC_ALL");
    const std::string former = found == nullptr ? "" : found;
    for (const char* language : {"ja", "ru", "el", "zh_CN", "en"}) {
        SetEnvironmentVariableA("LC_ALL", language);
        for (std::uint32_t id = 1; id <= 38; ++id) {
            char whole[1024];
            LoadStringA(static_cast<HINSTANCE>(run.context.moduleHandle), id, whole, sizeof whole);
            ResourceText loader;
            loader.load(id);
            EXPECT_STREQ(loader.text(), whole) << language << " " << id;
        }
    }
    SetEnvironmentVariableA("LC_ALL", found == nullptr ? nullptr : former.c_str());
}

TEST_F(MessagesTest, Insertions) {
    EXPECT_EQ(text(formatMessage(MessageId::initializing, "")), "Initializing ...");
    EXPECT_EQ(text(formatMessage(MessageId::invalidHive, "HKX", "\\HKX\\a")),
              "Invalid hive (HKX) specified in platform hint (\\HKX\\a).");
    const String longPath(std::size_t{5000}, 'p');
    EXPECT_EQ(formatMessage(MessageId::verifying, longPath).length(), 5010u);
    ResourceText loader;
    loader.formatText("%2!s!-%1!s!", "a", "b");
    EXPECT_STREQ(loader.text(), "b-a");
    loader.formatText("100%% of %1!s!", "50%");
    EXPECT_STREQ(loader.text(), "100% of 50%");
    EXPECT_EQ(failureOf([&] { loader.format(4711, "x"); }).find("Format message failed. Err = "),
              0u);
}

TEST_F(MessagesTest, SystemTextsKeepTheirLineEnd) {
    const std::string missing = text(systemErrorText(ERROR_FILE_NOT_FOUND));
    EXPECT_TRUE(missing.starts_with("File not found") ||
                missing.starts_with("The system cannot find the file specified"));
    EXPECT_TRUE(missing.ends_with(".\r\n")) << missing;
    EXPECT_EQ(failureOf([] { throwSystemError("Open failed  ==>  ", ERROR_ACCESS_DENIED); }),
              "Open failed  ==>  " + text(systemErrorText(ERROR_ACCESS_DENIED)));
    EXPECT_EQ(text(systemErrorText(0x2FFFFFFF)), "");
}

TEST_F(MessagesTest, SystemTextsNameTheirFile) {
    const std::string open = text(systemErrorWords(ERROR_BAD_EXE_FORMAT));
    const std::string filled = text(systemErrorText(ERROR_BAD_EXE_FORMAT, "C:\\5%1.exe"));
    EXPECT_EQ(open.find("%1"), std::string::npos) << open;
    EXPECT_NE(open.find("..."), std::string::npos) << open;
    EXPECT_NE(filled.find("C:\\5%1.exe"), std::string::npos) << filled;
    const std::string two = text(systemErrorText(ERROR_MR_MID_NOT_FOUND, "a"));
    EXPECT_EQ(two.find('%'), std::string::npos) << two;
    EXPECT_TRUE(text(systemErrorText(ERROR_ACCESS_DENIED, "C:\\a")).starts_with("C:\\a: A"));
    EXPECT_EQ(systemErrorText(ERROR_FILE_NOT_FOUND, "C:\\a"),
              systemErrorText(ERROR_FILE_NOT_FOUND));
}

}  // namespace
}  // namespace corvane
