// The walk over a directory tree.
#include <gtest/gtest.h>

#include <algorithm>

#include "host/DirectoryWalker.h"
#include "support/Scratch.h"
#include "support/TestContext.h"

namespace corvane {
namespace {

using test::text;

// Records what it meets, by the last part of each path.
class RecordingWalker final : public DirectoryWalker {
  public:
    explicit RecordingWalker(bool cancellable) : DirectoryWalker(cancellable) {}

    bool onFile(const String& path) override {
        met.push_back(lastPart(path));
        if (met.back() == cancelAt)
            runContext().cancelRequested.request();
        return met.back() == stopAt;
    }
    bool skipDirectory(const String& directory) override {
        return lastPart(directory.substr(0, directory.length() - 1)) == skipped;
    }
    std::vector<std::string> directories() const {
        std::vector<std::string> names;
        for (std::int32_t i = 0; i < visited().count(); ++i)
            names.push_back(lastPart(visited().at(i)));
        return names;
    }

    std::vector<std::string> met;
    std::string stopAt;
    std::string skipped;
    std::string cancelAt;

  private:
    static std::string lastPart(const String& path) {
        return text(path.substr(path.rfind('\\') + 1));
    }
};

class DirectoryWalkerTest : public ::testing::Test {
  protected:
    DirectoryWalkerTest() {
        for (const char* name : {"root\\f1", "root\\d1\\f2", "root\\d1\\d3\\f4", "root\\d2\\f3"})
            scratch.write(name, "");
    }

    test::Scratch scratch;
    test::TestContext run;
    RecordingWalker walker{true};
};

TEST_F(DirectoryWalkerTest, SeesEverythingFilesAndParentsFirst) {
    EXPECT_FALSE(walker.walk(scratch.path("root")));
    EXPECT_EQ(walker.met.front(), "f1");
    EXPECT_EQ(walker.met.size(), 4u);
    const auto directories = walker.directories();
    EXPECT_EQ(directories.size(), 4u);
    EXPECT_EQ(directories.front(), "root");
    EXPECT_LT(std::find(directories.begin(), directories.end(), "d1"),
              std::find(directories.begin(), directories.end(), "d3"));
    // A second walk starts afresh.
    walker.met.clear();
    walker.walk(scratch.path("root\\d1\\"));
    EXPECT_EQ(walker.met, (std::vector<std::string>{"f2", "f4"}));
    EXPECT_EQ(walker.directories().size(), 2u);
}

TEST_F(DirectoryWalkerTest, StopsSkipsAndCancels) {
    for (const char* name : {"root\\f5", "root\\f6", "root\\f7"})
        scratch.write(name, "");
    RecordingWalker stopped(true);
    stopped.stopAt = "f1";
    EXPECT_TRUE(stopped.walk(scratch.path("root")));
    EXPECT_EQ(stopped.met.back(), "f1");

    walker.skipped = "d1";
    EXPECT_FALSE(walker.walk(scratch.path("root")));
    EXPECT_EQ(walker.met.size(), 5u) << "all but those below d1";
    EXPECT_EQ(walker.directories().size(), 3u) << "a skipped directory was still taken up";

    RecordingWalker cancelled(true);
    cancelled.cancelAt = "f1";
    EXPECT_FALSE(cancelled.walk(scratch.path("root"))) << "a cancelled walk is no hit";
    EXPECT_EQ(cancelled.met.back(), "f1");
    EXPECT_EQ(cancelled.directories().size(), 1u);
    RecordingWalker stubborn(false);
    stubborn.walk(scratch.path("root"));
    EXPECT_EQ(stubborn.met.size(), 7u);
}

TEST_F(DirectoryWalkerTest, MovesTheBarOncePer100Files) {
    for (int i = 0; i < 294; ++i)
        scratch.write("root\\d2\\many" + std::to_string(i), "");
    walker.walk(scratch.path("root"));
    EXPECT_EQ(run.ui.steps, 2) << "298 files";
    walker.walk(scratch.path("root\\d1"));
    EXPECT_EQ(run.ui.steps, 2) << "the count starts again with each walk";
}

}  // namespace
}  // namespace corvane
