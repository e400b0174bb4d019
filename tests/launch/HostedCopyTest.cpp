// The copy of an application archive to a full disk.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cerrno>
#include <csignal>

#include "launch/LaunchRun.h"

namespace corvane {
namespace {

// Lets no file grow beyond `size` bytes for a scope.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t size) : formerHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &former_);
        const rlimit limit{size, former_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &former_);
        std::signal(SIGXFSZ, formerHandler_);
    }

  private:
    void (*formerHandler_)(int);
    rlimit former_{};
};

TEST(HostedCopyTest, AnApplicationArchiveThatDoesNotFitIsAnError) {
    test::LaunchRun run;
    run.scratch.write("app.jar", std::string(20000, 'j'));
    std::string failure;
    {
        const FileSizeLimit limit(10000);
        failure = run.expand("%APPLICATION_ARCHIVE%(\"app.jar\")");
    }
    EXPECT_EQ(failure, "Error writing file = " + std::to_string(EFBIG) +
                           " There may not be enough temporary disk space. Try using -cv:tempdir "
                           "to use a temporary directory on a partition with more disk space.");
}

}  // namespace
}  // namespace corvane
