// JVM files as a table of names, and the resolved file of a match.
#include <gtest/gtest.h>

#include "jvmfile/JvmFile.h"
#include "jvmfile/JvmMatch.h"
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

TEST_F(JvmFileTest, AMatchWritesItsResolvedFile) {
    run.context.tempDir = scratch.path();
    tags.setValue("DESC", "any");
    tags.setValue("JVM_HOME", "another candidate");
    JvmMatch found("C:\\jdk", tags);
    JvmMatch bundled("C:\\jre", tags);
    bundled.temporary = true;
    const String first = found.writeResolvedFile();
    const String second = bundled.writeResolvedFile();
    EXPECT_EQ(run.context.tempFiles.count(), 2);
    const TagFile one(first);
    const TagFile two(second);
    EXPECT_EQ(text(one.value("DESC", 0)), "any");
    EXPECT_EQ(text(one.value("JVM_HOME", 0)), "C:\\jdk");
    EXPECT_EQ(text(one.value("JVM_FILE", 0)), text(first));
    EXPECT_EQ(text(one.value("JVM_TEMP", 0)), "0");
    EXPECT_EQ(text(two.value("JVM_HOME", 0)), "C:\\jre");
    EXPECT_EQ(text(two.value("JVM_TEMP", 0)), "1");
}

}  // namespace
}  // namespace corvane
