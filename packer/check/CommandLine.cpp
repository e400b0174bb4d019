// The reading of a Java command line.
#include "packer/check/CommandLine.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "platform/Platform.h"

namespace corvane::pack {

namespace {

// Options of Java whose value is the next argument.
constexpr std::string_view optionsWithValue[] = {
    "-cp",
    "-classpath",
    "--class-path",
    "-p",
    "--module-path",
    "--add-modules",
    "--add-reads",
    "--add-exports",
    "--add-opens",
    "--enable-native-access",
    "--limit-modules",
    "--upgrade-module-path",
    "--source",
    "--describe-module",
    "-d",
};

constexpr const char* programShape =
    R"(the program is written """@JVM_HOME@\@JVM_EXE@"" and a blank)";

bool takesValue(const std::string& word) {
    return std::find(std::begin(optionsWithValue), std::end(optionsWithValue), word) !=
           std::end(optionsWithValue);
}

// A backslash in front of a quote makes it a part of the argument, two of them don't.
bool leavesQuoteOpen(const std::string& text) {
    bool open = false;
    std::size_t backslashes = 0;
    for (const char character : text) {
        open = open != (character == '"' && backslashes % 2 == 0);
        backslashes = character == '\\' ? backslashes + 1 : 0;
    }
    return open;
}

void readWords(const std::vector<std::string>& words, JavaCommand& command) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string next = i + 1 < words.size() ? words[i + 1] : "";
        if (words[i] == "-jar") {
            command.jar = next;
            return;
        }
        if (words[i] == "-m" || words[i] == "--module") {
            command.module = next;
            return;
        }
        if (takesValue(words[i])) {
            ++i;
        } else if (!words[i].starts_with('-') && !words[i].starts_with('@')) {
            command.mainClass = words[i];
            return;
        }
    }
}

// What is wrong with the program's own quotes and path; empty if nothing is.
std::string programMistake(const JavaCommand& command, const std::string& home,
                           const std::string& executable) {
    const std::string below = command.program.substr(std::min(home.size(), command.program.size()));
    if (!below.starts_with('\\'))
        return "no backslash stands between the home and the program";
    if (!executable.empty() && below.starts_with('\\' + executable) &&
        below.size() > executable.size() + 1)
        return "the quote that opens the command is not closed behind the program";
    if (!command.behindProgram.empty() && !command.behindProgram.starts_with(' '))
        return "no blank stands behind the program";
    return "";
}

}  // namespace

JavaCommand readJavaCommand(const std::string& line) {
    JavaCommand command;
    const std::size_t end = std::min(line.find('"', 1), line.size());
    command.program = line.substr(1, end - 1);
    command.behindProgram = line.substr(std::min(end + 1, line.size()));
    std::vector<std::string> words;
    const auto add = [&](const char* word) { words.emplace_back(word); };
    forEachFileArgument(line.c_str(), add);
    readWords(words, command);
    return command;
}

void checkCommandLine(const std::string& line, const std::string& home,
                      const std::string& executable, const Place& place, Findings& findings) {
    const JavaCommand command = readJavaCommand(line);
    const std::string mistake = programMistake(command, home, executable);
    if (!mistake.empty()) {
        findings.error("command-program", place, mistake, programShape);
    } else if (leavesQuoteOpen(command.behindProgram)) {
        findings.error("open-command-quote", place, "a quote of the command line is never closed",
                       R"(a backslash in front of a quote makes it a part of the argument; in a )"
                       "quoted value of the file each quote is doubled");
    } else if (command.mainClass.empty() && command.jar.empty() && command.module.empty()) {
        findings.error("no-main-class", place, "the command names no class to start",
                       "the main class stands behind the class path: %CP%() com.example.Main");
    } else if (command.mainClass.ends_with(".class") || command.mainClass.ends_with(".jar")) {
        findings.error("main-class-name", place,
                       command.mainClass + " is a file and not the name of a class",
                       "a class is named with dots and without .class; a jar stands behind -jar");
    }
}

}  // namespace corvane::pack
