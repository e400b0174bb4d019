// A started launcher.
#include "windowed/Launched.h"

#include <fstream>
#include <stdexcept>

namespace corvane::test {

namespace {

std::string quoted(const String& text) {
    return "\"" + test::text(text) + "\"";
}

}  // namespace

Launched::Launched(const LauncherPlan& plan) {
    std::filesystem::create_directories(scratch.native("temp"));
    for (const char* const home : {"home\\", "other\\"})
        addChild(home + executable());
    pack(plan);
    start(plan);
}

Launched::~Launched() {
    TerminateProcess(process_.get(), 1);
    WaitForSingleObject(process_.get(), INFINITE);
    // The system lets go of a program's file a little after its end.
    const auto gone = [this] {
        std::error_code error;
        std::filesystem::remove_all(scratch.native(), error);
        return !error;
    };
    waitFor(gone, std::chrono::seconds(2));
}

void Launched::addChild(const std::string& path) const {
    std::filesystem::create_directories(scratch.native(path).parent_path());
    std::filesystem::copy_file(u8"" REMOTE_CHILD, scratch.native(path));
}

std::string Launched::executable() const {
    return "bin\\" + scratch.native().stem().string() + ".exe";
}

void Launched::pack(const LauncherPlan& plan) const {
    std::vector<EmbeddedFile> files = {
        {FileType::instructions, "script", "INSTRUCTIONS:\n" + plan.script + "/:\n", 1},
        {FileType::jvmFile, "java.jvm",
         "DESC: Java 21\nSEARCH_ALL: 1\nJVM_EXE: " + executable() +
             "\nJVM_PROPERTIES: java.version=21...\nJVM_HOME: " + text(scratch.path("home")) + "\n",
         100},
        {FileType::launchScript, "launch", "COMMAND: \"\"\"@JVM_HOME@\\@JVM_EXE@\"\" %CP%()\"\n",
         2}};
    if (!plan.message.empty())
        files.push_back({FileType::jvmMessage, "message", plan.message, 3});
    if (!plan.library.empty())
        files.push_back({FileType::classpathFile, "big.jar", plan.library});
    std::ifstream program(std::filesystem::path(u8"" LAUNCHER), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(program), {}};
    std::ofstream launcher(scratch.native("setup.exe"), std::ios::binary);
    writeLauncher(launcher, plan.kind, files, bytes);
}

void Launched::start(const LauncherPlan& plan) {
    std::string line = quoted(scratch.path("setup.exe")) + " -cv:tempdir " +
                       quoted(scratch.path("temp")) + " -cv:log " +
                       quoted(scratch.path("run.log")) + " " + plan.arguments;
    if (plan.namesTheHome)
        line += " -cv:javahome " + quoted(scratch.path("home"));
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION information{};
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &information))
        throw std::runtime_error("the launcher can't be started: " + line);
    process_.reset(information.hProcess);
    CloseHandle(information.hThread);
    desktop_ = Desktop(information.dwProcessId);
}

::testing::AssertionResult Launched::awaitChild(int turn) const {
    if (waitFor([&] { return childStarted(turn); }))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << state();
}

std::string Launched::state() const {
    return (running() ? "running, status: " : "ended, status: ") + desktop_.status() +
           "\nquestion: " + Desktop::messageOf(desktop_.question()) + "\nlog: " + log();
}

bool Launched::childStarted(int turn) const {
    return scratch.exists("started." + std::to_string(turn));
}

// The child sees the file whole or not at all.
void Launched::release(int turn, const std::string& orders) const {
    scratch.write("orders", orders + "\n");
    std::filesystem::rename(scratch.native("orders"), scratch.native("go." + std::to_string(turn)));
}

bool Launched::running() const {
    return WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT;
}

std::int32_t Launched::exitValue() const {
    if (WaitForSingleObject(process_.get(), static_cast<DWORD>(patience.count())) != WAIT_OBJECT_0)
        throw std::runtime_error("the launcher doesn't end: " + state());
    DWORD value = 0;
    GetExitCodeProcess(process_.get(), &value);
    return static_cast<std::int32_t>(value);
}

}  // namespace corvane::test
