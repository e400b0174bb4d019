// Packing of a runtime image and its unpacking.
#include <gtest/gtest.h>

#include "PackedImage.h"

using namespace corvane;
using test::PackedImage;

namespace {

constexpr const char* names[] = {"bin\\java.exe", "lib\\modules", "lib\\empty", "release"};

std::string contents(const PackedImage& image, const std::string& directory) {
    std::string all;
    for (const char* name : names)
        all += image.scratch.read(directory + "\\" + name) + '|';
    return all;
}

}  // namespace

TEST(Unpacking, givesBackTheImageAndTheJvmFile) {
    const PackedImage image;
    const std::string installer = image.pack("%HOME%\\kept");
    EXPECT_EQ(image.pack("%HOME%\\kept"), installer);
    EXPECT_LT(installer.size(), 1000U);
    EXPECT_EQ(image.unpack(installer), "no failure");
    EXPECT_EQ(image.unpacked().size(), 9U);
    EXPECT_EQ(contents(image, "target"), contents(image, "image"));
    EXPECT_EQ(image.scratch.read("target\\jvm").substr(0, 43),
              "DESC:  Java 21.0.1\nJVM_EXE:  bin\\java.exe\nC");
    EXPECT_EQ(image.scratch.read("target\\jvm.files"),
              "10 bin/java\n0 lib/empty\n70000 lib/modules\n22 release\n15 bin/java.exe\n");
}

TEST(Unpacking, ofDamagedOrCutInstallersLeavesNothing) {
    const PackedImage image;
    const std::string whole = image.pack();
    for (std::size_t at = image.scratch.read("stub").size(); at < whole.size(); ++at) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x20);
        // Some bytes say nothing of the content: the digest is but a name.
        if (image.unpack(damaged) == "no failure") {
            ASSERT_EQ(contents(image, "target"), contents(image, "image")) << at;
            std::filesystem::remove_all(image.scratch.native("target"));
            std::filesystem::create_directory(image.scratch.native("target"));
        }
        ASSERT_TRUE(image.unpacked().empty()) << at;
    }
    for (std::size_t size = 0; size < whole.size(); size += 7)
        ASSERT_EQ(image.unpack(whole.substr(0, size)),
                  "No Java runtime is appended to this program, or it is cut short.");
    EXPECT_TRUE(image.unpacked().empty());
}

TEST(Unpacking, leavesAloneWhatIsInTheWay) {
    const PackedImage image;
    image.scratch.write("target\\release", "mine");
    EXPECT_TRUE(image.unpack(image.pack()).ends_with("/release is there already."));
    EXPECT_EQ(image.unpacked(), std::vector<std::string>{"release"});
    EXPECT_EQ(image.scratch.read("target\\release"), "mine");
}

TEST(RuntimeImage, isRefusedWhereItIsNone) {
    const PackedImage image;
    const auto failure = [&] {
        try {
            pack::readRuntimeImage(image.scratch.native("image"));
        } catch (const std::runtime_error& error) {
            const std::string text = error.what();
            return text.substr(text.find("image: ") + 7);
        }
        return std::string("no failure");
    };
    image.scratch.write("image\\jvm", "DESC");
    EXPECT_NE(failure(), "no failure");
    std::filesystem::remove(image.scratch.native("image\\jvm"));
    EXPECT_EQ(failure(), "no failure");
    image.scratch.write("image\\release", "VERSION=1\n");
    EXPECT_EQ(failure(),
              "no runtime image: it has no file \"release\" with a JAVA_VERSION; name the "
              "directory that jlink made");
}
