// Files of a launch that can't be read or written to their ends.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

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

// A list or an archive on a network drive that drops is none that is short.
TEST(HostedCopyTest, WhatCanNotBeReadToItsEndIsAnError) {
    test::LaunchRun run;
    for (const char* name : {"app.jar", "listed"})
        std::filesystem::create_symlink("/proc/self/mem", run.scratch.native(name));
    run.context().classpathAppend = String("@") + run.scratch.path("listed");
    for (const char* function : {"%APPLICATION_ARCHIVE%(\"app.jar\")", "%CP%()"})
        EXPECT_TRUE(run.expand(function).starts_with("Error reading file ")) << function;
}

}  // namespace
}  // namespace corvane
