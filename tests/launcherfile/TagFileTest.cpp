// The tag file: reading, faults, lookups, writing.
#include <gtest/gtest.h>

#include "launcherfile/TagFile.h"
#include "platform/Platform.h"
#include "support/Scratch.h"
#include "support/TestContext.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;

// All records of a tag file in one line: NAME=[value|value].
std::string dump(const TagFile& tags) {
    std::string out;
    for (const TagRecord& record : tags.records()) {
        out += (out.empty() ? "" : " ") + text(record.name) + "=[";
        std::int32_t count = 0;
        for (const String& value : record.values)
            out += (count++ == 0 ? "" : "|") + text(value);
        out += "]";
    }
    return out;
}

class TagFileTest : public ::testing::Test {
  protected:
    std::string parsed(const std::string& content) {
        const TagFile tags(scratch.write("t.tag", content));
        return dump(tags);
    }

    test::Scratch scratch;
    test::TestContext run;
};

TEST_F(TagFileTest, Reads) {
    const struct {
        const char* in;
        const char* out;
    } cases[] = {
        {"", ""},
        {"\n \n\t\r\n", ""},
        {"A: 1", "A=[1]"},
        {"A:1\nB :  two words  \n", "A=[1] B=[two words]"},
        {"NAME: \"\"\n", "NAME=[]"},
        {"NAME: \"a\"\"b\" tail\n", "NAME=[a\"b]"},
        {"NAME: \" kept \"\n", "NAME=[ kept ]"},
        {"PATH: C:\\x:y\n", "PATH=[C:\\x:y]"},
        {"PATH: C:\\x:\n", "PATH=[C:\\x:]"},
        {":x\n", "=[x]"},
        {"A: /:\n", "A=[/:]"},
        {"NAME:\n/:\n", ""},
        {"NAME:\n\"\"\n/:\n", ""},
        {"A:\n one\n\n  \"t\"\"wo\" x\n/:\nB: 2\n", "A=[one|t\"wo] B=[2]"},
        {"A:\n one\n\"/:\"\nB: 2\n", "A=[one] B=[2]"},
        {"A: 1\nB: 2\nA: 3\n", "B=[2] A=[3]"},
        {"A: 1\nB: 2\nA:\n/:\n", "B=[2]"},
        {"A:1\nB:2\nC:3\nB:4\nD:\nE:\nF:\n/"
         ":\nE:5\nF:5\nG:5\nH:6\nI:7\nJ:8\nK:9\nL:1\nM:2\nN:3\nO:4\nP:5\n"
         "Q:6\nR:7\nA:8\nQ:9\nD:1\n",
         "C=[3] B=[4] E=[5] F=[5] G=[5] H=[6] I=[7] J=[8] K=[9] L=[1] M=[2] N=[3] O=[4] P=[5] "
         "R=[7] A=[8] Q=[9] "
         "D=[1]"},
        {"A:\nSET S1 = \"a b\"\n:LABEL\n/:\n", "A=[SET S1 = \"a b\"|:LABEL]"},
        {"A: car\rriage\r\n", "A=[carriage]"},
    };
    for (const auto& [in, out] : cases)
        EXPECT_EQ(parsed(in), out) << in;
}

TEST_F(TagFileTest, FaultsNameFileAndLine) {
    run.context.logFile = scratch.path("log");
    const std::string file = "Syntax error in " + text(scratch.path("t.tag")) + " at line ";
    const struct {
        const char* in;
        std::string message;
    } cases[] = {
        {"A: 1\n\nno tag\n", file + "3 ==> Missing colon at the end of the tag name."},
        {"A: 1\nB:\n1\n2\n", file + "2 ==> Missing /: tag completer."},
        {"B:", file + "1 ==> Missing /: tag completer."},
        {"A:\n\"unterminated\n/:\n", "Expected double quote to end argument near 1"},
        {"A: \"unterminated\n", "Expected double quote to end argument near 4"},
    };
    for (const auto& [in, message] : cases)
        EXPECT_EQ(failureOf([&] { parsed(in); }), message) << in;
    EXPECT_NE(scratch.readText("log").find("ERROR: " + cases[0].message), std::string::npos);
    EXPECT_EQ(scratch.readText("log").find("double quote"), std::string::npos);
    EXPECT_EQ(failureOf([&] { TagFile(scratch.path("none.tag")); }),
              "Unable to load input file: " + text(scratch.path("none.tag")));
}

TEST_F(TagFileTest, ReadsItsPartOfALargerFile) {
    const std::string front = "front: garbage\n";
    const std::string tags = "A: 1\nB:\n2\n";
    scratch.write("big", front + tags + "/:\nC: 3\n");
    const StreamGuard stream(openStream(scratch.path("big").cstr(), "rb"));
    const auto read = [&](std::size_t length) {
        TagFile part;
        part.read(stream.get(), "part", static_cast<std::int32_t>(front.size()),
                  static_cast<std::int32_t>(length));
        return dump(part);
    };
    EXPECT_EQ(read(0), "");
    EXPECT_EQ(read(1), "A=[1]");
    EXPECT_EQ(read(tags.size()), "A=[1] B=[2]") << "a block runs to its end";
    TagFile merged;
    merged.setValue("A", "old");
    merged.setValue("Z", "stays");
    merged.read(stream.get(), "part", static_cast<std::int32_t>(front.size()), -1);
    EXPECT_EQ(dump(merged), "Z=[stays] A=[1] B=[2] C=[3]");
    EXPECT_EQ(failureOf([&] { merged.read(stream.get(), "x", -1, 0); }),
              "Unable to read tag file.");
}

TEST_F(TagFileTest, Lookups) {
    TagFile tags;
    tags.addValue("A", "1");
    tags.addValue("A", "2");
    EXPECT_EQ(text(tags.value("A", 1)), "2");
    EXPECT_EQ(text(tags.value("A", 2)), "");
    EXPECT_EQ(text(tags.value("a", 0)), "");
    EXPECT_EQ(tags.valueCount("A") + tags.valueCount("B"), 2);
    tags.setValue("A", "new");
    tags.setJvmTags("C:\\jdk", "C:\\f", true);
    tags.setJvmTags("C:\\jre", "C:\\f", false);
    EXPECT_EQ(dump(tags), "A=[new] JVM_HOME=[C:\\jre] JVM_FILE=[C:\\f] JVM_TEMP=[0]");

    const struct {
        const char* value;
        bool byDefaultFalse;
        bool byDefaultTrue;
    } bools[] = {{"1", true, true},   {"0", false, false},  {"-1", true, true},
                 {" 2x", true, true}, {"yes", false, true}, {"", false, true}};
    for (const auto& [value, asFalse, asTrue] : bools) {
        tags.setValue("BOOL", value);
        EXPECT_EQ(tags.boolValue("BOOL", false), asFalse) << value;
        EXPECT_EQ(tags.boolValue("BOOL", true), asTrue) << value;
    }
}

TEST_F(TagFileTest, WritesWhatItReadsBack) {
    const TagFile tags(scratch.write("r.tag",
                                     "ONE: plain text\nBLANK: \" \"\nEMPTY: \"\"\n"
                                     "MANY:\n\"a \"\"b\"\"\"\n\"\tc\"\n\"d\"\n/:\n"));
    tags.write(scratch.path("w.tag"));
    EXPECT_EQ(scratch.readText("w.tag"),
              "ONE:  plain text\nBLANK:  \" \"\nEMPTY:  \"\"\n"
              "MANY:\n  \"a \"\"b\"\"\"\n  \"\tc\"\n  d\n/:\n");
    EXPECT_EQ(dump(TagFile(scratch.path("w.tag"))), dump(tags));
    const std::string missing = failureOf([&] { tags.write(scratch.path("missing\\w.tag")); });
    EXPECT_NE(missing.find("missing\\w.tag: "), std::string::npos) << missing;
}

}  // namespace
}  // namespace corvane
