// One pass over a template.
#include <gtest/gtest.h>

#include <map>

#include "support/TestContext.h"
#include "template/TokenResolver.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;

// Knows a few tokens; others become their name within angle brackets.
class MapResolver final : public TokenResolver {
  public:
    void resolveToken(String& target, char, std::size_t start, std::size_t end) override {
        const std::string name = text(target.substr(start + 1, end - start - 1));
        const auto known = values.find(name);
        const std::string value = known == values.end() ? "<" + name + ">" : known->second;
        target.replace(start, end - start + 1, value.c_str());
    }

    std::map<std::string, std::string> values;
};

TEST(TemplateTest, TokensAndDoubledSeparators) {
    MapResolver resolver;
    resolver.values = {{"empty", ""}, {"nested", "x%a%y"}, {"half", "%"}, {"ab", "%a"}};
    const struct {
        const char* in;
        const char* out;
    } cases[] = {
        {"", ""},
        {"%", "%"},
        {"%a%", "<a>"},
        {"100%%", "100%"},
        {"a%%b", "a%b"},
        {"a%%b%c", "a<%b>c"},
        {"%%%", "<%>"},
        {"%%%%", "<<>>"},
        {"50% of 60%", "50< of 60>"},
        {"%empty%%empty%", ""},
        {"%nested%", "x<a>y"},
        {"%half%a%", "<a>"},
        {"%ab%%", "<a>"},
    };
    for (const auto& [in, out] : cases)
        EXPECT_EQ(text(expandTemplate(resolver, in, '%')), out) << in;
}

// Every text of up to six characters over separator and letter: the pass ends, and without two
// separators a letter apart nothing is resolved.
TEST(TemplateTest, EveryShortText) {
    MapResolver resolver;
    for (int length = 0; length <= 6; ++length) {
        for (int bits = 0; bits < 1 << length; ++bits) {
            std::string in;
            for (int i = 0; i < length; ++i)
                in += (bits >> i & 1) != 0 ? '#' : 'a';
            const std::string out = text(expandTemplate(resolver, in.c_str(), '#'));
            const std::size_t open = in.find('#');
            const bool hasToken =
                open != std::string::npos && in.find('#', open + 2) != std::string::npos;
            EXPECT_EQ(out.find('<') != std::string::npos, hasToken) << in << " -> " << out;
        }
    }
}

TEST(TemplateTest, ATokenThatReproducesItselfEndsWithAnError) {
    const char* const message = "Launch script error: A token expands to itself.";
    MapResolver resolver;
    resolver.values = {{"self", "%self%"}, {"longer", "x%longer%"},        {"ping", "%pong%"},
                       {"pong", "%ping%"}, {"double", "%double%%double%"}, {"shrink", "%shrink%"}};
    for (const char* in : {"%self%", "a %longer% b", "%ping%", "%double%", "%shrink%   tail"})
        EXPECT_EQ(failureOf([&] { expandTemplate(resolver, in, '%'); }), message) << in;
    // Many tokens, one behind the other or nested, are no such thing.
    std::string many;
    for (int i = 0; i < 5000; ++i)
        many += "%a%";
    EXPECT_EQ(expandTemplate(resolver, many.c_str(), '%').length(), 15000u);
    resolver.values["list"] = many;
    EXPECT_EQ(expandTemplate(resolver, "%list% and %list%", '%').length(), 30005u);
}

}  // namespace
}  // namespace corvane
