// A runtime that is kept between runs.
#include <gtest/gtest.h>

#include "PackedImage.h"
#include "host/Environment.h"
#include "instructions/KeptRuntime.h"
#include "launcherfile/TagFile.h"

using namespace corvane;
using test::PackedImage;

namespace {

// An installer as a launcher carries it: its file is the launcher's.
FileIndexEntry entryFor(const PackedImage& image, const char* name) {
    const std::string bytes = image.pack("%TEST_ROOM%\\kept");
    runContext().launcherPath = image.scratch.write(name, bytes);
    FileIndexEntry entry;
    entry.length = static_cast<std::int32_t>(bytes.size());
    return entry;
}

// What a start does, and whether it had to unpack; "" when the place can't be used.
std::string start(const FileIndexEntry& installer) {
    KeptRuntime kept(installer);
    if (!kept.available())
        return "";
    const bool unpacks = !kept.isWhole();
    if (unpacks) {
        const String target = kept.prepare();
        if (target.empty())
            return "in the way";
        const StreamGuard file(openStream(runContext().launcherPath.cstr(), "rb"));
        unpackRuntime(file.get(), static_cast<std::uint32_t>(installer.length), target);
        EXPECT_TRUE(kept.finish());
    }
    kept.use();
    return (unpacks ? "unpacked " : "found ") + test::text(kept.home());
}

}  // namespace

TEST(KeptRuntime, staysAsLongAsARunUsesIt) {
    const test::TestContext run;
    const PackedImage image;
    setEnvironmentValue("TEST_ROOM", image.scratch.path("room"));
    const FileIndexEntry first = entryFor(image, "first");
    const std::string home = start(first).substr(9);
    EXPECT_EQ(start(first), "found " + home);
    const String mark = (home + ".uses\\another").c_str();
    {
        const FileGuard other(CreateFileA(mark.cstr(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                          FILE_ATTRIBUTE_NORMAL, nullptr));
        ASSERT_TRUE(other);
        // A damaged one isn't replaced under the feet of a run.
        image.scratch.write("room\\kept\\" + home.substr(home.rfind('\\') + 1) + "\\release", "");
        EXPECT_EQ(start(first), "in the way");
        image.scratch.write("image\\more", "");
        const FileIndexEntry second = entryFor(image, "second");
        EXPECT_EQ(start(second).substr(0, 9), "unpacked ");
        EXPECT_EQ(start(second).substr(0, 6), "found ");
        EXPECT_NE(GetFileAttributesA(home.c_str()), INVALID_FILE_ATTRIBUTES);
    }
    image.scratch.write("image\\still more", "");
    EXPECT_EQ(start(entryFor(image, "third")).substr(0, 9), "unpacked ");
    EXPECT_EQ(GetFileAttributesA(home.c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(KeptRuntime, whatElseLiesThereStays) {
    const test::TestContext run;
    const PackedImage image;
    setEnvironmentValue("TEST_ROOM", image.scratch.path("room"));
    const std::string name = "0123456789abcdef0123456789abcdef";
    image.scratch.write("room\\kept\\0123456789abcdef0123456789abcdeg", "");
    image.scratch.write("room\\kept\\" + name + "0\\file", "");
    image.scratch.write("room\\kept\\" + name + ".part\\file", "");
    EXPECT_EQ(start(entryFor(image, "launcher")).substr(0, 9), "unpacked ");
    EXPECT_TRUE(image.scratch.exists("room\\kept\\0123456789abcdef0123456789abcdeg"));
    EXPECT_TRUE(image.scratch.exists("room\\kept\\" + name + "0\\file"));
    EXPECT_FALSE(image.scratch.exists("room\\kept\\" + name + ".part"));
    image.scratch.write("image\\more", "");
    KeptRuntime unfilled(entryFor(image, "other"));
    EXPECT_FALSE(unfilled.prepare().empty());
    EXPECT_FALSE(unfilled.finish()) << "nothing was unpacked";
    TagFile().write(unfilled.home() + ".part\\jvm");
    ASSERT_TRUE(CreateDirectoryA(unfilled.home().cstr(), nullptr));
    EXPECT_FALSE(unfilled.finish()) << "another one is in its place";
    setEnvironmentValue("TEST_ROOM", "");
    EXPECT_EQ(start(entryFor(image, "launcher")), "");
    setEnvironmentValue("TEST_ROOM", "relative");
    EXPECT_EQ(start(entryFor(image, "launcher")), "");
}
