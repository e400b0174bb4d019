// Stands for a JVM's java.exe in the tests: started with the class "Verify" it behaves as its
// home's file `behaviour` says, otherwise it plays an application and shows what reached it.
//
// The lines of `behaviour`: `crash`, `silent`, `flood` (much, and then the report), `endless` (a
// flood without end), `hang`, `particular` (a crash, with Java options in the environment), or
// NAME=VALUE for a property.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "Wait.h"

#ifdef _WIN32
#include <process.h>
#endif

namespace {

namespace fs = std::filesystem;

constexpr int crashed = 134;
constexpr int floodLines = 60000;  // many times what a pipe holds

std::string program;

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "(unset)" : value;
}

int verify(const std::vector<std::string>& names) {
    std::ifstream behaviour(fs::path(variable("JAVA_HOME")) / "behaviour");
    std::map<std::string, std::string> values;
    for (std::string line; std::getline(behaviour, line);) {
        if (line == "crash")
            return crashed;
        if (line == "silent")
            return 0;
        if (line == "hang")
            std::this_thread::sleep_for(std::chrono::hours(1));
        if (line == "particular" && variable("JAVA_TOOL_OPTIONS") != "(unset)")
            return crashed;
        for (int i = 0; line == "endless" || (line == "flood" && i < floodLines); ++i)
            std::puts("a line in front of the magic one, and one more word");
        values[line.substr(0, line.find('='))] = line.substr(line.find('=') + 1);
    }
    std::puts("1739021872");
    for (const std::string& name : names)
        std::puts(values[name].c_str());
    return 0;
}

// At one go: an unbuffered stream would take the characters one by one.
void write(std::FILE* stream, int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += static_cast<char>('a' + i % 26);
    std::fwrite(text.data(), 1, text.size(), stream);
}

// Runs this program with other arguments, and waits for its end unless it is to be left alone.
void again(const std::string& arguments, bool wait) {
#ifdef _WIN32
    _spawnl(wait ? _P_WAIT : _P_NOWAIT, program.c_str(), "again", arguments.c_str(), nullptr);
#else
    [[maybe_unused]] const int result =
        std::system(("'" + program + "' " + arguments + (wait ? "" : " &")).c_str());
#endif
}

// What options with a value do; their exit value, if they give one.
int act(const std::string& option, const std::string& value) {
    const int number = std::atoi(value.c_str());
    if (option == "--exit")
        return number;
    if (option == "--err") {
        std::fputs(value.c_str(), stderr);
        std::fflush(stderr);
    } else if (option == "--write")
        write(stdout, number);
    else if (option == "--write-err")
        write(stderr, number);
    else if (option == "--env")
        std::printf("{%s}", variable(value.c_str()).c_str());
    else if (option == "--nul")
        std::fwrite(("one" + std::string(1, '\0') + value).c_str(), 1, 7, stdout);
    else if (option == "--copy")
        std::cout << std::cin.rdbuf();
    else if (option == "--touch")
        std::ofstream{value};
    else if (option == "--sleep")
        std::this_thread::sleep_for(std::chrono::milliseconds(number));
    else if (option == "--again")
        again(value, true);
    else if (option == "--leave")
        again(value, false);
    else if (option == "--wait-for")
        corvane::test::waitFor([&] { return fs::exists(value); }, std::chrono::minutes(1));
    else if (option == "--close") {
        std::fclose(stdout);
        std::fclose(stderr);
    } else if (option == "--abort")
        std::abort();
    return 0;
}

// Shows the arguments that are no options.
int application(const std::vector<std::string>& arguments) {
    int exitValue = 0;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (i + 1 == arguments.size() || !arguments[i].starts_with("--")) {
            std::printf("[%s]", arguments[i].c_str());
        } else {
            exitValue += act(arguments[i], arguments[i + 1]);
            ++i;
        }
    }
    return exitValue;
}

// The arguments, those of an argument file in its place. Each has a line of its own, in quotes.
std::vector<std::string> expanded(const std::vector<std::string>& arguments) {
    std::vector<std::string> all;
    for (const std::string& argument : arguments) {
        if (!argument.starts_with('@')) {
            all.push_back(argument);
            continue;
        }
        std::ifstream file(fs::path(argument.substr(1)));
        for (std::string word; file >> std::quoted(word);)
            all.push_back(word);
    }
    return all;
}

}  // namespace

int main(int argc, char** argv) {
    program = argv[0];
    const std::vector<std::string> arguments = expanded({argv + 1, argv + argc});
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "Verify")
            return verify(
                {arguments.begin() + static_cast<std::ptrdiff_t>(i) + 1, arguments.end()});
    }
    return application(arguments);
}
