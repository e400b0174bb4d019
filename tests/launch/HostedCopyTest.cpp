// The copy of an application archive to a full disk.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cerrno>
#include <csignal>

#include "launch/LaunchRun.h"

namespace corvane {
namespace {

TEST(HostedCopyTest, AnApplicationArchiveThatDoesNotFitIsAnError) {
    test::LaunchRun run;
    run.scratch.write("app.jar", std::string(20000, 'j'));
    // No file may grow beyond this size, for as long as the copy takes.
    rlimit former{};
    getrlimit(RLIMIT_FSIZE, &former);
    const rlimit limit{10000, former.rlim_max};
    const auto formerHandler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    const std::string failure = run.expand("%APPLICATION_ARCHIVE%(\"app.jar\")");
    setrlimit(RLIMIT_FSIZE, &former);
    std::signal(SIGXFSZ, formerHandler);
    EXPECT_EQ(failure, "Error writing file = " + std::to_string(EFBIG) +
                           " There may not be enough temporary disk space. Try using -cv:tempdir "
                           "to use a temporary directory on a partition with more disk space.");
}

}  // namespace
}  // namespace corvane
