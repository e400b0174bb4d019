// Copying of embedded files where the system fails, by a full device and by failures on demand.
#include <gtest/gtest.h>

#include <cerrno>

#include "base/Messages.h"
#include "launcherfile/Extraction.h"
#include "launcherfile/LauncherFile.h"
#include "platform/Platform.h"
#include "platform/hosted/Faults.h"
#include "support/Payload.h"

namespace corvane {
namespace {

TEST(FailuresTest, AFullDiskOrADeniedFileEndsTheCopyAtOnce) {
    test::LauncherRun run;
    run.useLauncher({{FileType::classpathFile, "full", std::string(200000, 'x'), 1},
                     {FileType::classpathFile, "full", "buffered", 2}});
    const StreamGuard stream(openStream(run.context().launcherPath.cstr(), "rb"));
    run.files().readIndex(stream.get(), 0);
    const auto extracting = [&run](const String& directory, std::int32_t index = 0) {
        return test::failureOf([&] { run.files().at(index)->extract(directory); });
    };
    const std::string advice = test::text(loadMessage(MessageId::tryAnotherTempDir));
    const std::string full = "Error writing file = " + std::to_string(ENOSPC) +
                             " (Z:\\dev\\full: There is not enough space on the disk.)" + advice;
    EXPECT_EQ(extracting("Z:\\dev"), full);
    EXPECT_EQ(run.ui().steps, 1);
    EXPECT_EQ(extracting("Z:\\dev", 1), full);
    const hosted::ScopedFault denied("openStream", ERROR_ACCESS_DENIED, 2);
    EXPECT_EQ(extracting(run.scratch.path("temp")),
              "Error writing file = " + std::to_string(EACCES) + " (" +
                  test::text(run.scratch.path("temp\\full")) + ": Access is denied.)");
    EXPECT_EQ(run.ui().steps, 2);
}

// The host's own memory can be opened, and not be read at its beginning.
TEST(FailuresTest, AReadOrWriteThatFailsInATagFileNamesIt) {
    const std::string memory = "Z:\\proc\\self\\mem";
    EXPECT_TRUE(test::failureOf([&] {
                    TagFile tags(memory.c_str());
                }).starts_with("Error reading file " + memory + ": "));
    TagFile tags;
    tags.setValue("A", "1");
    EXPECT_TRUE(test::failureOf([&] { tags.write("Z:\\dev\\full"); })
                    .starts_with("Error writing file = " + std::to_string(ENOSPC) +
                                 " (Z:\\dev\\full: There is not enough space on the disk.)"));
}

}  // namespace
}  // namespace corvane
