// A started launcher.
#include "windowed/Launched.h"

#include <fstream>
#include <stdexcept>

namespace corvane::test {

namespace {

std::string orderFile(int turn) {
    return "go." + std::to_string(turn);
}

std::string quoted(const std::string& text) {
    return " \"" + text + "\"";
}

}  // namespace

Launched::Launched(const LauncherPlan& plan) {
    std::filesystem::create_directories(scratch.native("temp"));
    for (const std::string& home : plan.homes)
        addChild(home + "\\" + executable());
    pack(plan);
    start(plan);
}

Launched::~Launched() {
    constexpr int children = 4;
    for (int turn = 1; turn <= children && running(); ++turn) {
        if (!scratch.exists(orderFile(turn)))
            release(turn);
    }
    if (running())
        TerminateProcess(process_.get(), 1);
    WaitForSingleObject(process_.get(), INFINITE);
    // The system lets go of a program's file a little after its end.
    const auto gone = [](const std::filesystem::path& path) {
        std::error_code error;
        std::filesystem::remove(path, error);
        return !error;
    };
    for (const std::string& program : programs_)
        waitFor([&] { return gone(scratch.native(program)); }, std::chrono::seconds(2));
}

void Launched::addChild(const std::string& path) {
    std::filesystem::create_directories(scratch.native(path).parent_path());
    std::filesystem::copy_file(REMOTE_CHILD, scratch.native(path));
    programs_.push_back(path);
}

std::string Launched::executable() const {
    return "bin\\" + scratch.native().stem().string() + ".exe";
}

void Launched::pack(const LauncherPlan& plan) {
    const std::string jvmFile = "DESC: Java 21\nJVM_EXE: " + executable() +
                                "\nJVM_HOME: " + text(scratch.path(plan.homes.front())) + "\n" +
                                plan.jvmTags;
    const std::string launchScript =
        "COMMAND: \"\"\"@JVM_HOME@\\@JVM_EXE@\"\" " + plan.command + "\"\n";
    std::vector<EmbeddedFile> files = {
        {FileType::instructions, "script", "INSTRUCTIONS:\n" + plan.script + "/:\n", 1},
        {FileType::jvmFile, "java.jvm", jvmFile, 100},
        {FileType::launchScript, "launch", launchScript, 2}};
    files.insert(files.end(), plan.files.begin(), plan.files.end());
    std::ifstream program(LAUNCHER, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(program), {}};
    std::ofstream launcher(scratch.native("setup.exe"), std::ios::binary);
    writeLauncher(launcher, plan.kind, files, bytes);
    programs_.emplace_back("setup.exe");
}

void Launched::start(const LauncherPlan& plan) {
    std::string line = quoted(text(scratch.path("setup.exe"))).substr(1) + " -cv:tempdir" +
                       quoted(text(scratch.path("temp"))) + " -cv:log" +
                       quoted(text(scratch.path("run.log")));
    if (plan.namesTheHome)
        line += " -cv:javahome" + quoted(text(scratch.path(plan.homes.front())));
    for (const std::string& argument : plan.arguments)
        line += quoted(argument);
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION information{};
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &information))
        throw std::runtime_error("the launcher can't be started: " + line);
    process_.reset(information.hProcess);
    CloseHandle(information.hThread);
    desktop_.emplace(information.dwProcessId);
}

::testing::AssertionResult Launched::awaitChild(int turn) const {
    if (waitFor([&] { return childStarted(turn); }))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << state();
}

std::string Launched::state() const {
    return (running() ? "running, status: " : "ended, status: ") + desktop_->status() +
           "\nquestion: " + Desktop::messageOf(desktop_->question()) + "\nlog: " + log();
}

bool Launched::childStarted(int turn) const {
    return scratch.exists("started." + std::to_string(turn));
}

// The child sees the file whole or not at all.
void Launched::release(int turn, const std::string& orders) const {
    scratch.write("orders", orders + "\n");
    std::filesystem::rename(scratch.native("orders"), scratch.native(orderFile(turn)));
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
