// The log file and the debug log.
#include <gtest/gtest.h>

#include "base/DebugLog.h"
#include "base/Log.h"
#include "base/Report.h"
#include "support/Scratch.h"
#include "support/TestContext.h"

namespace corvane {
namespace {

using test::text;

TEST(LogTest, LevelsAndOneSeparatorPerProcess) {
    const test::Scratch scratch;
    {
        test::TestContext run;
        logMessage("lost, there is no log yet");
        run.context.logFile = scratch.path("missing\\a.log");
        logMessage("lost, and the separator is still to come");
        run.context.logFile = scratch.path("a.log");
        logMessage("plain");
        logMessage("careful", LogLevel::warning);
        logMessage("two\nlines", LogLevel::error);
    }
    test::TestContext second;
    second.context.logFile = scratch.path("a.log");
    logMessage("50% of a second run");
    EXPECT_EQ(scratch.readText("a.log"),
              "------------------\nplain\nWARNING: careful\nERROR: two\nlines\n"
              "------------------\n50% of a second run\n");
}

TEST(DebugLogTest, WritesOnlyWithAPath) {
    const test::Scratch scratch;
    test::TestContext run;
    run.context.debugLogEnabled = true;
    debugLogLine("nowhere");
    run.context.debugLogPath = scratch.path("d.log");
    debugLogLine("one");
    debugLogLine("line%d");
    EXPECT_EQ(scratch.readText("d.log"), "one\nline%d\n");
}

TEST(ReportTest, ObjectsAreValidWhateverTheTextsHold) {
    const std::pair<const char*, const char*> cases[] = {
        {"C:\\a \"b\"", R"(C:\\a \"b\")"},
        {"line\n\x7F", R"(line\u000a\u007f)"},
        {"\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80", "\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80"},
        {"\xFC!", R"(\ufffd!)"},
        {"\xE2\x82", R"(\ufffd\ufffd)"},
        {"\xC0\xAF\xED\xA0\x80", R"(\ufffd\ufffd\ufffd\ufffd\ufffd)"},
        {"\xF4\x90\x80\x80", R"(\ufffd\ufffd\ufffd\ufffd)"},
    };
    for (const auto& [in, out] : cases) {
        const std::string object = text(ReportObject("e").addIn(in, in).text());
        const std::string field = std::string("\"") + out + "\"";
        EXPECT_TRUE(object.ends_with("Z\"," + field + ":" + field + "}")) << object;
    }
    StringList two;
    two.add("a");
    two.add("b");
    EXPECT_TRUE(text(ReportObject("e")
                         .open("o")
                         .addIn("n", "")
                         .close()
                         .add("l", two)
                         .add("m", StringList())
                         .add("n", -1)
                         .text())
                    .ends_with(R"(,"o":{"n":""},"l":["a","b"],"m":[],"n":-1})"));
}

}  // namespace
}  // namespace corvane
