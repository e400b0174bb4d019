// Copying of embedded files where the system fails, by a full device and by failures on demand.
#include <gtest/gtest.h>

#include <cerrno>

#include "app/base/Messages.h"
#include "launcherfile/Extraction.h"
#include "launcherfile/LauncherFile.h"
#include "platform/Platform.h"
#include "platform/hosted/Faults.h"
#include "support/Payload.h"

namespace corvane {
namespace {

using hosted::ScopedFault;
using test::failureOf;
using test::text;

class FailuresTest : public ::testing::Test {
  protected:
    FailuresTest() {
        run.useLauncher({{FileType::classpathFile, "full", std::string(200000, 'x'), 1}});
        const StreamGuard stream(openStream(run.context().launcherPath.cstr(), "rb"));
        run.files().readIndex(stream.get(), 0);
    }

    std::string extracting(const String& directory) {
        return failureOf([&] { run.files().at(0)->extract(directory); });
    }
    static std::string writeFailure(int error) {
        return "Error writing file = " + std::to_string(error) +
               text(loadMessage(CatalogueText::tryAnotherTempDir));
    }

    test::LauncherRun run;
};

TEST_F(FailuresTest, AFullDiskEndsTheCopyAtOnce) {
    EXPECT_EQ(extracting("Z:\\dev"), writeFailure(ENOSPC));
    EXPECT_EQ(run.ui().steps, 1);
}

TEST_F(FailuresTest, AnOutputThatIsDeniedCarriesTheReason) {
    const ScopedFault denied("openStream", ERROR_ACCESS_DENIED, 2);
    EXPECT_EQ(extracting(run.scratch.path("temp")), writeFailure(EACCES));
    EXPECT_EQ(run.ui().steps, 0);
}

TEST_F(FailuresTest, SpaceThatCannotBeAskedForIsAFailure) {
    const ScopedFault unknown("GetDiskFreeSpaceA", ERROR_NOT_READY);
    EXPECT_EQ(extracting(run.scratch.path("temp")),
              "GetDiskFreeSpace failed  ==>  The device is not ready.\r\n");
    EXPECT_FALSE(run.scratch.exists("temp\\full"));
}

TEST_F(FailuresTest, AFileThatCannotBeLookedAtIsLogged) {
    const ScopedFault broken("CreateFileA", ERROR_IO_DEVICE);
    EXPECT_FALSE(fileExists(run.context().launcherPath));
    EXPECT_NE(
        run.log().find("\nThe request could not be performed because of an I/O device error."),
        std::string::npos);
}

}  // namespace
}  // namespace corvane
