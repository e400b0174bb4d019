// Links and marks of a host's image, and failures at any moment.
#include <gtest/gtest.h>

#include "PackedImage.h"
#include "instructions/KeptRuntime.h"
#include "launcherfile/TagFile.h"
#include "platform/hosted/Faults.h"

using namespace corvane;
using test::PackedImage;

namespace {

// An image for the host, with a link and a program.
void makeHosted(const PackedImage& image) {
    namespace fs = std::filesystem;
    fs::remove(image.scratch.native("image\\bin\\java.exe"));
    fs::create_symlink("../release", image.scratch.native("image\\lib\\link"));
    fs::permissions(image.scratch.native("image\\lib\\empty"), fs::perms::owner_all);
}

}  // namespace

TEST(HostedUnpacking, keepsLinksAndPrograms) {
    namespace fs = std::filesystem;
    const PackedImage image;
    makeHosted(image);
    EXPECT_EQ(image.unpack(image.pack()), "no failure");
    EXPECT_EQ(fs::read_symlink(image.scratch.native("target\\lib\\link")), "../release");
    const auto runs = [&](const char* name) {
        const fs::perms perms = fs::status(image.scratch.native(name)).permissions();
        return (perms & fs::perms::owner_exec) != fs::perms::none;
    };
    EXPECT_TRUE(runs("target\\bin\\java"));
    EXPECT_TRUE(runs("target\\lib\\empty"));
    EXPECT_FALSE(runs("target\\release"));
    fs::create_symlink("../../..", image.scratch.native("image\\lib\\out"));
    EXPECT_THROW(image.pack(), pack::PackError);
}

TEST(HostedUnpacking, aFailureAtAnyMomentLeavesNothing) {
    const PackedImage image;
    makeHosted(image);
    const std::string installer = image.pack();
    const std::pair<const char*, int> operations[] = {
        {"openStream", 7}, {"CreateDirectoryA", 2}, {"makeLink", 1}, {"makeExecutable", 2}};
    for (const auto& [operation, calls] : operations) {
        // The first stream is the installer's own.
        for (int call = operation == std::string("openStream") ? 2 : 1; call <= calls; ++call) {
            const hosted::ScopedFault fault(operation, ERROR_DISK_FULL, call);
            EXPECT_NE(image.unpack(installer), "no failure") << operation << call;
            EXPECT_TRUE(image.unpacked().empty()) << operation << call;
        }
    }
    EXPECT_EQ(image.unpack(installer), "no failure");
}

TEST(HostedUnpacking, aRuntimeThatAScannerHoldsIsMovedBehindThat) {
    test::TestContext run;
    const PackedImage image;
    const std::string bytes = image.pack(test::text(image.scratch.path("kept")));
    run.context.launcherPath = image.scratch.write("launcher", bytes);
    FileIndexEntry installer;
    installer.length = static_cast<std::int32_t>(bytes.size());
    KeptRuntime kept(installer);
    TagFile().write(kept.prepare() + "\\jvm");
    const hosted::ScopedFault denied("MoveFileExA", ERROR_ACCESS_DENIED);
    EXPECT_TRUE(kept.finish());
    EXPECT_NE(GetFileAttributesA(kept.home().cstr()), INVALID_FILE_ATTRIBUTES);
}
