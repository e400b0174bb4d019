// A launcher file of the test's making, started as a user would, without -console.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "support/Payload.h"
#include "windowed/Desktop.h"

namespace corvane::test {

// What goes into the launcher. The script finds the JVM file under the id 100, whose home is the
// first of the `homes`. Each of them holds the child that the test controls (remote_child.cpp).
struct LauncherPlan {
    std::string script;  // lines, each ended by "\n"
    std::uint8_t kind = 0;
    std::string jvmTags = {};  // further ones, as lines of a tag file
    std::string command = {};  // what follows the JVM's path on the child's command line
    std::vector<EmbeddedFile> files = {};
    std::vector<std::string> arguments = {};
    bool namesTheHome = false;  // as the user's own, among the arguments
    std::vector<std::string> homes = {"home"};
};

class Launched {
  public:
    explicit Launched(const LauncherPlan& plan);
    Launched(const Launched&) = delete;
    Launched& operator=(const Launched&) = delete;
    // Ends a launcher that still runs.
    ~Launched();

    // Waits for the n-th start of the child, counted from 1; a failure tells what there is instead.
    ::testing::AssertionResult awaitChild(int turn) const;
    bool childStarted(int turn) const;
    // Lets that child end: lines `out TEXT`, `err TEXT`, `exit NUMBER`.
    void release(int turn, const std::string& orders = "exit 0") const;

    bool running() const;
    // Waits for the end of the launcher.
    std::int32_t exitValue() const;

    std::string log() const { return scratch.read("run.log"); }
    Desktop& desktop() { return *desktop_; }

    // Puts the child into the scratch directory, under a path of that.
    void addChild(const std::string& path);

    // Holds the launcher `setup.exe`, the homes, `temp`, and the log `run.log`.
    Scratch scratch;

  private:
    // The child's place in a home. No other launcher's child has that name, so none is found.
    std::string executable() const;
    void pack(const LauncherPlan& plan);
    void start(const LauncherPlan& plan);
    // For the words of a failure.
    std::string state() const;

    std::vector<std::string> programs_;
    HandleGuard process_;
    std::optional<Desktop> desktop_;
};

}  // namespace corvane::test
