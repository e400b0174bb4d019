// Helpers of the platform tests, written in the operations under test.
#include "Testing.h"

#include <numeric>
#include <set>

namespace corvane::testing {

namespace {

// Reads what is there; false once the pipe is broken.
bool drain(HANDLE pipe, std::string& text) {
    DWORD available = 0;
    if (!PeekNamedPipe(pipe, nullptr, 0, nullptr, &available, nullptr))
        return false;
    char buffer[4096];
    DWORD count = 0;
    if (available != 0 && ReadFile(pipe, buffer, sizeof buffer, &count, nullptr))
        text.append(buffer, count);
    return true;
}

}  // namespace

std::optional<std::string> variable(const char* name) {
    const DWORD size = GetEnvironmentVariableA(name, nullptr, 0);
    if (size == 0)
        return std::nullopt;
    std::string value(size, '\0');
    value.resize(GetEnvironmentVariableA(name, value.data(), size));
    return value;
}

DWORD attributesOf(const std::string& path) {
    return GetFileAttributesA(path.c_str());
}

std::string listing(const std::string& directory) {
    std::multiset<std::string> names;
    WIN32_FIND_DATAA data;
    const FindGuard find(FindFirstFileA((directory + "\\*").c_str(), &data));
    for (bool more = static_cast<bool>(find); more; more = FindNextFileA(find.get(), &data)) {
        const bool isDirectory = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        names.insert(data.cFileName + std::string(isDirectory ? "/ " : " "));
    }
    return std::accumulate(names.begin(), names.end(), std::string());
}

std::string inQuotes(const std::string& path) {
    return std::string(1, '"').append(path).append(1, '"');
}

std::string childLine(const std::string& arguments) {
    char module[MAX_PATH];
    GetModuleFileNameA(nullptr, module, MAX_PATH);
    const std::string path = module;
    return inQuotes(path.substr(0, path.rfind('\\')) + "\\platform_child").append(" ") + arguments;
}

Pipe::Pipe() {
    SECURITY_ATTRIBUTES inherit{};
    inherit.nLength = sizeof inherit;
    inherit.bInheritHandle = TRUE;
    CreatePipe(readEnd.put(), writeEnd.put(), &inherit, 0);
}

Child start(std::string commandLine, DWORD flags, STARTUPINFOA* streams, const char* directory) {
    STARTUPINFOA none{};
    STARTUPINFOA& startup = streams != nullptr ? *streams : none;
    startup.cb = sizeof startup;
    startup.dwFlags = streams != nullptr ? STARTF_USESTDHANDLES : 0;
    PROCESS_INFORMATION child{};
    const bool started =
        CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, streams != nullptr, flags,
                       nullptr, directory, &startup, &child) != FALSE;
    return {HandleGuard(child.hProcess), HandleGuard(child.hThread), child.dwProcessId,
            started ? NO_ERROR : GetLastError()};
}

ChildResult runPiped(const std::string& commandLine, const char* directory) {
    Pipe err, out;  // in this order they get into each other's way (NoStreamOverwritesAnother)
    STARTUPINFOA streams{};
    streams.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    streams.hStdOutput = out.writeEnd.get();
    streams.hStdError = err.writeEnd.get();
    const Child child = start(commandLine, 0, &streams, directory);
    out.writeEnd.reset();
    err.writeEnd.reset();
    ChildResult result{child.error, 0, "", ""};
    if (child.error != NO_ERROR)
        return result;
    for (bool open = true; open; Sleep(1)) {
        const bool outOpen = drain(out.readEnd.get(), result.out);
        open = drain(err.readEnd.get(), result.err) || outOpen;
    }
    WaitForSingleObject(child.process.get(), INFINITE);
    GetExitCodeProcess(child.process.get(), &result.exitCode);
    return result;
}

ChildResult runChild(const std::string& arguments) {
    return runPiped(childLine(arguments));
}

}  // namespace corvane::testing
