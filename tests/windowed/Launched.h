// A launcher file of the test's making, started as a user would, without -console.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/Payload.h"
#include "windowed/Desktop.h"

namespace corvane::test {

// What goes into the launcher. The script finds a JVM file under the id 100; it describes JVMs in
// two homes, `home` and `other`, that are children under the test's control (remote_child.cpp).
struct LauncherPlan {
    std::string script;  // lines, each ended by "\n"
    std::uint8_t kind = 0;
    std::string library = {};    // content of an embedded classpath file, big.jar
    std::string message = {};    // tags of a JVM message
    bool namesTheHome = false;   // as the user's own, among the arguments
    std::string arguments = {};  // further ones
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

    std::string log() const { return scratch.readText("run.log"); }
    const Desktop& desktop() const { return desktop_; }

    // Puts the child into the scratch directory, under a path of that.
    void addChild(const std::string& path) const;

    // Holds the launcher `setup.exe`, the homes, `temp`, and the log `run.log`.
    Scratch scratch;

  private:
    // The child's place in a home. No other launcher's child has that name, so none is found.
    std::string executable() const;
    void pack(const LauncherPlan& plan) const;
    void start(const LauncherPlan& plan);
    // For the words of a failure.
    std::string state() const;

    HandleGuard process_;
    Desktop desktop_;
};

}  // namespace corvane::test
