// Rules for the instruction script.
#include "packer/check/ScriptRules.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "packer/check/ScriptRun.h"

namespace corvane::pack {

namespace {

constexpr const char* scriptTag = "INSTRUCTIONS";
// A script that can stand in more ways than this counts something up.
constexpr std::size_t mostStates = 20000;

bool isLabel(const String& line) {
    return !line.empty() && line.at(0) == ':';
}

bool isComment(const std::string& text) {
    return text.starts_with("//");
}

std::vector<std::string> commandNames() {
    std::vector<std::string> names;
    for (std::size_t i = 0; Instructions::commandName(i) != nullptr; ++i)
        names.emplace_back(Instructions::commandName(i));
    return names;
}

// What is in parentheses at the end of an interpreter's message.
std::string named(const std::string& text) {
    const std::size_t open = text.find('(');
    const std::size_t close = text.rfind(')');
    return open == std::string::npos || close == std::string::npos
               ? std::string()
               : text.substr(open + 1, close - open - 1);
}

// Every state that a script can be in, and how they follow each other.
class ScriptWays {
  public:
    ScriptWays(const CheckedProject& project, Findings& findings)
        : findings_(findings),
          script_(*project.first(FileType::instructions)),
          lines_(script_.tags.values(scriptTag)),
          tool_(project.kind == toolKind),
          run_(project) {}

    void check() {
        checkLabels();
        explore();
        // An error ends ways that would lead further.
        if (nodes_.size() >= mostStates || !told_.empty())
            return;
        checkUnreached();
        checkLoops();
    }

  private:
    struct Node {
        ScriptState state;
        std::vector<std::size_t> comesFrom;
        bool leadsOut = false;
    };

    Place place(std::int32_t line, std::size_t offset = 0) const {
        return script_.place(scriptTag, static_cast<std::size_t>(line), offset);
    }

    void checkLabels() {
        std::map<std::string, int> seen;
        for (std::int32_t i = 0; i < lines_.count(); ++i) {
            const std::string line(lines_.at(i).view());
            if (!isLabel(lines_.at(i)))
                continue;
            if (i == 0)
                findings_.warning("first-line-label", place(i),
                                  "the first line is not searched for labels",
                                  "put a line in front of it, as a comment");
            else if (!seen.emplace(line, i).second)
                findings_.warning(
                    "doubled-label", place(i),
                    "the label " + line.substr(1) + " stands twice, and only the first one counts");
        }
    }

    void explore() {
        add(run_.start(), 0);
        for (std::size_t i = 0; i < nodes_.size() && nodes_.size() < mostStates; ++i) {
            if (follow(i, false))
                follow(i, true);
        }
    }

    // Whether the step depends on the machine.
    bool follow(std::size_t from, bool outcome) {
        ScriptState state = nodes_[from].state;
        const std::int32_t line = state.position.currentLine();
        if (line < lines_.count())
            reached_.insert(line);
        const ScriptStep step = run_.step(state, outcome);
        checkSurplus(line, state);
        if (step.rule != nullptr)
            tell(line, step);
        if (step.ended) {
            nodes_[from].leadsOut = true;
            if (step.rule == nullptr)
                checkEnd(from, state);
        } else {
            add(state, from);
        }
        return step.depends;
    }

    void add(const ScriptState& state, std::size_t from) {
        const auto [found, isNew] = known_.emplace(state.key(), nodes_.size());
        if (isNew)
            nodes_.push_back({state, {}, false});
        nodes_[found->second].comesFrom.push_back(from);
    }

    void tell(std::int32_t line, const ScriptStep& step) {
        if (!told_.insert({line, step.text}).second)
            return;
        findings_.error(step.rule, place(line), step.text,
                        step.hint.empty() ? hintFor(step, lines_.at(line)) : step.hint);
    }

    std::string hintFor(const ScriptStep& step, const String& line) const {
        const std::string name = named(step.text);
        const std::string rule = step.rule;
        if (rule == "unknown-command")
            return isComment(name) ? "a blank belongs behind //" : didYouMean(name, commandNames());
        if (rule == "bad-expansion" && line.view().starts_with("LAUNCH"))
            return "behind the path stands for how many seconds the dialog stays: LAUNCH @S2@ 5";
        if (rule == "missing-label")
            return hintForLabel(":" + name);
        return {};
    }

    std::string hintForLabel(const std::string& label) const {
        std::vector<std::string> labels;
        for (const String& line : lines_) {
            const std::string text(line.view());
            if (isLabel(line) && text.starts_with(label + " "))
                return "a label stands alone on its line";
            if (isLabel(line))
                labels.push_back(text);
        }
        if (!labels.empty() && lines_.at(0) == label.c_str())
            return "the first line is not searched for labels";
        return didYouMean(label, labels);
    }

    void checkSurplus(std::int32_t line, const ScriptState& state) {
        const std::string surplus(state.position.surplus().view());
        if (surplus.empty() || isComment(surplus) || !surplusTold_.insert(line).second)
            return;
        const std::string text(lines_.at(line).view());
        findings_.warning("surplus-argument", place(line, text.rfind(surplus)),
                          "the command does not read this: " + surplus,
                          "put texts with blanks into quotes, and // in front of a comment");
    }

    // A run that ends behind its last line or with EXIT.
    void checkEnd(std::size_t from, const ScriptState& state) {
        if (state.started || state.told || tool_)
            return;
        const std::int32_t line = lineOf(nodes_[from].comesFrom[0]);
        if (silentEnds_.insert(line).second)
            findings_.warning("silent-end", place(line),
                              "on one way the run ends behind this line: it has started nothing, "
                              "and the user was told nothing",
                              "SHOW \"what is missing, and what to do\"");
    }

    std::int32_t lineOf(std::size_t node) const {
        return std::min(nodes_[node].state.position.currentLine(), lines_.count() - 1);
    }

    // A jump goes behind its label.
    bool isReached(std::int32_t line) const {
        while (line < lines_.count() && !reached_.contains(line) && isLabel(lines_.at(line)))
            ++line;
        return line == lines_.count() || reached_.contains(line);
    }

    // Of lines that follow each other the first is told.
    void checkUnreached() {
        bool before = false;
        for (std::int32_t i = 0; i < lines_.count(); ++i) {
            const bool unreached = !isReached(i);
            const std::string text(lines_.at(i).view());
            if (unreached && !before && !isComment(text))
                findings_.warning(
                    isLabel(lines_.at(i)) ? "unreached-label" : "unreached-line", place(i),
                    isLabel(lines_.at(i)) ? "nothing leads to the label " + text.substr(1)
                                          : "nothing leads to this line");
            before = unreached && (before || !isComment(text));
        }
    }

    // Goes back from the ends; what isn't met has no way out.
    void checkLoops() {
        std::vector<std::size_t> pending;
        for (std::size_t i = 0; i < nodes_.size(); ++i) {
            if (nodes_[i].leadsOut)
                pending.push_back(i);
        }
        while (!pending.empty()) {
            const std::size_t node = pending.back();
            pending.pop_back();
            for (const std::size_t earlier : nodes_[node].comesFrom) {
                if (!nodes_[earlier].leadsOut) {
                    nodes_[earlier].leadsOut = true;
                    pending.push_back(earlier);
                }
            }
        }
        // The one that was come upon last is in the loop, not in front of it.
        const auto stuck = std::find_if(nodes_.rbegin(), nodes_.rend(),
                                        [](const Node& node) { return !node.leadsOut; });
        if (stuck != nodes_.rend())
            findings_.error("endless-loop", place(stuck->state.position.currentLine()),
                            "a run that comes here never ends");
    }

    Findings& findings_;
    const CheckedFile& script_;
    const StringList& lines_;
    const bool tool_;
    ScriptRun run_;
    std::vector<Node> nodes_;
    std::map<std::string, std::size_t> known_;
    std::set<std::int32_t> reached_;
    std::set<std::int32_t> surplusTold_;
    std::set<std::int32_t> silentEnds_;
    std::set<std::pair<std::int32_t, std::string>> told_;
};

}  // namespace

void checkScript(const CheckedProject& project, Findings& findings) {
    if (project.first(FileType::instructions) != nullptr)
        ScriptWays(project, findings).check();
}

}  // namespace corvane::pack
