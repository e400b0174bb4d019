// Texts of the stand-in: command lines, wide text, languages and the system's words.
#include <gtest/gtest.h>

#include <cstring>

#include "Testing.h"
#include "platform/hosted/CommandLine.h"
#include "platform/hosted/MessageTables.h"
#include "platform/hosted/WideText.h"

namespace corvane::hosted {
namespace {

// All texts over a small alphabet, up to a length.
std::vector<std::string> allTexts(const std::string& alphabet, std::size_t longest) {
    std::vector<std::string> texts{""};
    for (std::size_t i = 0; i < texts.size(); ++i)
        for (std::size_t c = 0; texts[i].size() < longest && c < alphabet.size(); ++c)
            texts.push_back(texts[i] + alphabet[c]);
    return texts;
}

std::vector<std::string> ownArguments() {
    int count = 0;
    LPWSTR* block = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 0; i < count; ++i)
        arguments.push_back(toNarrow(block[i]));
    LocalFree(block);
    return arguments;
}

TEST(HostedCommandLine, EveryArgumentComesBack) {
    for (const std::string& text : allTexts("a \\\"\t", 5)) {
        const std::vector<std::string> arguments{"p p", text, "x", text};
        setCommandLine(joinCommandLine(arguments));
        ASSERT_EQ(ownArguments(), arguments) << text;
        ASSERT_EQ(splitArguments(joinCommandLine(arguments).substr(5), QuotePair::keepsQuoting),
                  (std::vector<std::string>{text, "x", text}));
    }
    // Bytes that are no UTF-8 survive the wide form.
    const std::vector<std::string> odd{"./p", "\xFF\x80 caf\xC3\xA9 \xC3", "\xF0\x9F\x98\x80",
                                       "\n"};
    setCommandLine(joinCommandLine(odd));
    EXPECT_EQ(ownArguments(), odd);
    setCommandLine(joinCommandLine({}));
    EXPECT_EQ(ownArguments(), std::vector<std::string>{""});
}

TEST(HostedWideText, RoundTripOfAllBytes) {
    for (const std::string& text : allTexts("\x41\x80\xBF\xC0\xC3\xE2\xED\xF0\xF4\xFF", 4))
        ASSERT_EQ(toNarrow(toWide(text)), text);
    const struct {
        const char* text;
        std::u16string wide;
    } cases[] = {
        {"\xC2\x80", u"\u0080"},
        {"\xE0\xA0\x80", u"\u0800"},
        {"\xF0\x90\x80\x80", u"\U00010000"},
        {"\xC0\x80", {0xDCC0, 0xDC80}},              // too long for what it says
        {"\xED\xA0\x80", {0xDCED, 0xDCA0, 0xDC80}},  // a surrogate
    };
    for (const auto& row : cases)
        EXPECT_EQ(toWide(row.text), row.wide) << row.text;
    EXPECT_EQ(toNarrow(std::u16string{0xD800, 'x', 0xDC01}), "\xEF\xBF\xBDx\xEF\xBF\xBD");
}

TEST(Languages, BestTableForALocale) {
    const LanguageTexts tables[] = {{7, "de", nullptr, 0},
                                    {9, "en", nullptr, 0},
                                    {2070, "pt", nullptr, 0},
                                    {1046, "pt_BR", nullptr, 0},
                                    {1028, "zh_TW zh_HK", nullptr, 0},
                                    {2052, "zh_CN", nullptr, 0}};
    const struct {
        const char* locale;
        unsigned language;
    } cases[] = {{"de", 7},    {"de_AT.UTF-8", 7}, {"de@euro", 7},  {"pt_BR.UTF-8", 1046},
                 {"pt", 2070}, {"pt_AO", 2070},    {"zh_HK", 1028}, {"zh_CN.GB18030", 2052},
                 {"zh", 1028}, {"en_GB", 9},       {"C.UTF-8", 9},  {"POSIX", 9},
                 {"", 9},      {"d", 9},           {"deu", 9},      {"_", 9}};
    for (const auto& row : cases)
        EXPECT_EQ(chooseLanguage(tables, std::size(tables), row.locale)->languageId, row.language)
            << row.locale;
}

}  // namespace
}  // namespace corvane::hosted
