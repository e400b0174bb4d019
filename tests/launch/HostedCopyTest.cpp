// The copy of an application archive that can't be written to its end.
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
    EXPECT_TRUE(failure.starts_with("Error writing file = " + std::to_string(EFBIG) + " ($"));
    EXPECT_TRUE(failure.ends_with(
        "\\app.jar: The file size exceeds the limit allowed and cannot be saved.)"))
        << failure;
}

}  // namespace
}  // namespace corvane
