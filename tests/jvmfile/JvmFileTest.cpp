// JVM files as a table of names, and the resolved file of a match.
#include <gtest/gtest.h>

#include "jvmfile/JvmFile.h"
#include "jvmfile/JvmMatch.h"
#include "jvmfile/JvmProperty.h"
#include "support/Scratch.h"
#include "support/TestContext.h"

namespace corvane {
namespace {

using test::text;

class JvmFileTest : public ::testing::Test {
  protected:
    test::Scratch scratch;
    test::TestContext run;
    TagFile tags;
    JvmFile file{tags};
};

TEST_F(JvmFileTest, TokensAreTags) {
    tags.setValue("JVM_HOME", "C:\\jdk\\");
    tags.setValue("OTHER", "C:\\x\\");
    tags.addValue("MANY", "first");
    tags.addValue("MANY", "second");
    tags.setValue("NESTED", "<@MANY@>");
    const struct {
        const char* in;
        const char* out;
    } cases[] = {{"@JVM_HOME@", "C:\\jdk"},
                 {"@OTHER@", "C:\\x\\"},
                 {"a@NO_SUCH_TAG@b", "ab"},
                 {"@MANY@", "first"},
                 {"@NESTED@@OTHER@", "<first>C:\\x\\"},
                 {"a@@b", "a@b"}};
    for (const auto& [in, out] : cases)
        EXPECT_EQ(text(file.expandTokens(in)), out) << in;
}

TEST(JvmPropertyTest, OnlyASignInFrontOfTheFirstEqualsSignMakesABound) {
    using Relation = JvmProperty::Relation;
    const struct {
        const char* line;
        const char* name;
        const char* pattern;
        Relation relation;
    } cases[] = {
        {" a.b = c=d ", "a.b", "c=d", Relation::equal}, {" a >= 17 ", "a", "17", Relation::atLeast},
        {"a<=17=1", "a", "17=1", Relation::atMost},     {"a=>=17", "a", ">=17", Relation::equal},
        {"a=<=", "a", "<=", Relation::equal},           {"a> = 17", "a>", "17", Relation::equal},
        {"a>>=17", "a>", "17", Relation::atLeast},      {"=17", "", "17", Relation::equal}};
    for (const auto& [line, name, pattern, relation] : cases) {
        const auto property = parseProperty(line);
        EXPECT_EQ(text(property->name), name) << line;
        EXPECT_EQ(text(property->pattern), pattern) << line;
        EXPECT_EQ(property->relation, relation) << line;
    }
    EXPECT_EQ(parseProperty("a > 17"), nullptr);
}

// tests/endtoend/cases/actions shows what is written; matches of one JVM file share its tags.
TEST_F(JvmFileTest, EachMatchWritesAResolvedFileOfItsOwn) {
    run.context.tempDir = scratch.path();
    JvmMatch found("C:\\jdk", tags);
    JvmMatch bundled("C:\\jre", tags);
    bundled.temporary = true;
    for (JvmMatch* const match : {&bundled, &found}) {
        const String path = match->writeResolvedFile();
        const TagFile written(path);
        EXPECT_EQ(text(written.value("JVM_HOME", 0)), text(match->home()));
        EXPECT_EQ(text(written.value("JVM_FILE", 0)), text(path));
        EXPECT_EQ(text(written.value("JVM_TEMP", 0)), match->temporary ? "1" : "0");
    }
}

}  // namespace
}  // namespace corvane
