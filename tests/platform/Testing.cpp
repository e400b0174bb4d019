// Helpers of the platform tests, written in the operations under test.
#include "Testing.h"

#include <algorithm>

namespace corvane::testing {

namespace {

void removeTree(const std::string& path) {
    for (const std::string& name : listing(path + "\\*")) {
        const bool isDirectory = name.back() == '\\';
        const std::string full = path + "\\" + name.substr(0, name.size() - (isDirectory ? 1 : 0));
        SetFileAttributesA(full.c_str(), FILE_ATTRIBUTE_NORMAL);
        if (isDirectory) {
            removeTree(full);
        } else if (!DeleteFileA(full.c_str())) {
            RemoveDirectoryA(full.c_str());  // a link to a directory
        }
    }
    RemoveDirectoryA(path.c_str());
}

// Reads what is there; false once the pipe is broken.
bool drain(HANDLE pipe, std::string& text) {
    DWORD available = 0;
    if (!PeekNamedPipe(pipe, nullptr, 0, nullptr, &available, nullptr)) {
        return false;
    }
    char buffer[4096];
    DWORD count = 0;
    if (available != 0 && ReadFile(pipe, buffer, sizeof buffer, &count, nullptr)) {
        text.append(buffer, count);
    }
    return true;
}

}  // namespace

Scratch::Scratch() {
    char root[MAX_PATH];
    char name[MAX_PATH];
    GetTempPathA(MAX_PATH, root);
    GetTempFileNameA(root, "CVT", 0, name);
    DeleteFileA(name);
    CreateDirectoryA(name, nullptr);
    path_ = name;
}

Scratch::~Scratch() {
    removeTree(path_);
}

std::string Scratch::file(const std::string& name, const std::string& content) const {
    const StreamGuard stream(openStream(path(name).c_str(), "wb"));
    std::fwrite(content.data(), 1, content.size(), stream.get());
    return path(name);
}

std::string Scratch::directory(const std::string& name) const {
    CreateDirectoryA(path(name).c_str(), nullptr);
    return path(name);
}

std::string variable(const char* name) {
    const DWORD size = GetEnvironmentVariableA(name, nullptr, 0);
    if (size == 0) {
        return "(unset)";
    }
    std::string value(size, '\0');
    value.resize(GetEnvironmentVariableA(name, value.data(), size));
    return value;
}

ScopedVariable::ScopedVariable(const char* name, const char* value)
    : name_(name),
      former_(variable(name)),
      wasSet_(GetEnvironmentVariableA(name, nullptr, 0) != 0) {
    SetEnvironmentVariableA(name, value);
}

ScopedVariable::~ScopedVariable() {
    SetEnvironmentVariableA(name_.c_str(), wasSet_ ? former_.c_str() : nullptr);
}

std::string contentOf(const std::string& path) {
    const StreamGuard stream(openStream(path.c_str(), "rb"));
    std::string content;
    char buffer[4096];
    for (std::size_t count = 1; stream && count != 0;) {
        count = std::fread(buffer, 1, sizeof buffer, stream.get());
        content.append(buffer, count);
    }
    return content;
}

std::vector<std::string> listing(const std::string& pattern) {
    std::vector<std::string> names;
    WIN32_FIND_DATAA data;
    const FindGuard find(FindFirstFileA(pattern.c_str(), &data));
    for (bool more = static_cast<bool>(find); more; more = FindNextFileA(find.get(), &data)) {
        const std::string name = data.cFileName;
        const bool isDirectory = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (name != "." && name != "..") {
            names.push_back(name + (isDirectory ? "\\" : ""));
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string childProgram() {
    char module[MAX_PATH];
    GetModuleFileNameA(nullptr, module, MAX_PATH);
    const std::string path = module;
    return path.substr(0, path.rfind('\\')) + "\\platform_child";
}

std::string inQuotes(const std::string& path) {
    return std::string(1, '"').append(path).append(1, '"');
}

std::string childLine(const std::string& arguments) {
    return inQuotes(childProgram()).append(1, ' ').append(arguments);
}

ChildResult runPiped(const std::string& commandLine, const char* directory) {
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    HandleGuard outRead, outWrite, errRead, errWrite;
    CreatePipe(outRead.put(), outWrite.put(), &inherit, 0);
    CreatePipe(errRead.put(), errWrite.put(), &inherit, 0);
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput = outWrite.get();
    startup.hStdError = errWrite.get();
    PROCESS_INFORMATION child{};
    std::string line = commandLine;
    ChildResult result;
    result.started = CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                    directory, &startup, &child) != FALSE;
    if (!result.started) {
        result.error = GetLastError();
        return result;
    }
    const HandleGuard process(child.hProcess);
    const HandleGuard thread(child.hThread);
    outWrite.reset();
    errWrite.reset();
    for (bool open = true; open;) {
        const bool outOpen = drain(outRead.get(), result.out);
        open = drain(errRead.get(), result.err) || outOpen;
        Sleep(1);
    }
    WaitForSingleObject(process.get(), INFINITE);
    GetExitCodeProcess(process.get(), &result.exitCode);
    return result;
}

ChildResult runChild(const std::string& arguments) {
    return runPiped(childLine(arguments));
}

}  // namespace corvane::testing
