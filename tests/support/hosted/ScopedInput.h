// What the user types on the console.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <string>

namespace corvane::test {

// Puts the text of a file, named by its host path, behind standard input for a scope.
class ScopedInput {
  public:
    explicit ScopedInput(const std::string& file) : former_(dup(STDIN_FILENO)) {
        EXPECT_NE(std::freopen(file.c_str(), "r", stdin), nullptr);
    }
    ~ScopedInput() {
        dup2(former_, STDIN_FILENO);
        close(former_);
        std::clearerr(stdin);
    }
    ScopedInput(const ScopedInput&) = delete;
    ScopedInput& operator=(const ScopedInput&) = delete;

  private:
    int former_;
};

}  // namespace corvane::test
