// Translation of batch files, line by line.
#include "platform/hosted/Batch.h"

#include <sstream>

#include "platform/hosted/Paths.h"

namespace corvane::hosted {

namespace {

// Between single quotes a shell leaves all but the single quote itself alone.
std::string shellQuoted(const std::string& text) {
    std::string result = "'";
    for (const char c : text) {
        result += c == '\'' ? "'\\''" : std::string(1, c);
    }
    return result + "'";
}

// What stands between `head` and `tail`, if the line has that form.
std::optional<std::string> between(const std::string& line, const std::string& head,
                                   const std::string& tail) {
    const bool fits =
        line.size() >= head.size() + tail.size() && line.starts_with(head) && line.ends_with(tail);
    return fits ? std::optional(line.substr(head.size(), line.size() - head.size() - tail.size()))
                : std::nullopt;
}

// The host path of a path in the batch file, as one word of the script. Percent signs are doubled.
std::optional<std::string> shellPath(std::string path) {
    for (std::size_t at = path.find("%%"); at != std::string::npos; at = path.find("%%", at + 1)) {
        path.erase(at, 1);
    }
    const auto host = path.find('"') == std::string::npos ? hostPath(path.c_str()) : std::nullopt;
    return host ? std::optional(shellQuoted(*host)) : std::nullopt;
}

// A command with one quoted path; none if the line isn't one.
std::optional<std::string> pathCommand(const std::string& line, const std::string& head,
                                       const std::string& shellCommand) {
    const auto path = between(line, head, "\"");
    const auto shell = path ? shellPath(*path) : std::nullopt;
    return shell ? std::optional(shellCommand + *shell + "\n") : std::nullopt;
}

// The text keeps the blank in front of the arrows, as Windows' echo does.
std::optional<std::string> echoCommand(const std::string& line) {
    const auto words = between(line, "@echo ", "");
    const std::size_t arrows = words ? words->rfind(">> ") : std::string::npos;
    if (arrows == std::string::npos) {
        return std::nullopt;
    }
    const auto file = shellPath(words->substr(arrows + 3));
    return file ? std::optional("printf '%s\\n' " + shellQuoted(words->substr(0, arrows)) + " >> " +
                                *file + "\n")
                : std::nullopt;
}

// The end of the loop that a label began: out of it once the file is gone, else a pause and back,
// up to the last try. The 300 tries of 0.2 s make the minute that the cleanup may take.
std::optional<std::string> loopEnd(const std::string& line, const std::string& label) {
    const auto path = between(line, "if exist \"", "\" goto " + label);
    const auto shell = path && !label.empty() ? shellPath(*path) : std::nullopt;
    return shell ? std::optional("[ -e " + *shell +
                                 " ] || break\n"
                                 "tries=$((tries + 1))\n"
                                 "[ $tries -lt 300 ] || break\n"
                                 "sleep 0.2\n"
                                 "done\n")
                 : std::nullopt;
}

// A line that is neither a label nor the end of a loop. Failing removals are silent, as the batch
// file's are.
std::optional<std::string> plainCommand(const std::string& line) {
    if (line.empty()) {
        return "";
    }
    if (const auto command = pathCommand(line, "del \"", "rm -f -- ")) {
        return command;
    }
    if (const auto command = pathCommand(line, "rmdir /q \"", "rmdir -- ")) {
        return command;
    }
    return echoCommand(line);
}

}  // namespace

// The whole text or nothing: half a cleanup would leave more behind than none.
std::optional<std::string> translateBatch(const std::string& text) {
    std::string script;
    std::string label;  // of the loop that is open
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        // A label opens a loop; only one is open at a time.
        if (line.starts_with(':') && line.size() > 1 && label.empty()) {
            label = line.substr(1);
            script += "tries=0\nwhile :; do\n";
        } else if (const auto end = loopEnd(line, label)) {
            label.clear();
            script += *end;
        } else if (const auto command = plainCommand(line)) {
            script += *command;
        } else {
            return std::nullopt;
        }
    }
    // A label that nothing goes back to is no loop that this could build.
    return label.empty() ? std::optional(script) : std::nullopt;
}

}  // namespace corvane::hosted
