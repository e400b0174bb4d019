// A run of an instruction script that carries nothing out.
#include "packer/check/ScriptRun.h"

#include <algorithm>
#include <iterator>

#include "base/RunContext.h"
#include "foundation/Exceptions.h"
#include "variables/VariableTable.h"

namespace corvane::pack {

namespace {

constexpr const char* foundHome = R"(Z:\found)";
constexpr const char* foundFile = R"(Z:\found.jvm)";
constexpr const char* installedFile = R"(Z:\installed\jvm)";

// Ends a step: something of the project doesn't fit the command.
struct Misfit {
    const char* rule;
    std::string text;
    std::string hint;
};

}  // namespace

// Looks at what a command is given, and decides what comes of it by the outcome.
class ScriptRun::LookingWork final : public CommandWork {
  public:
    explicit LookingWork(const CheckedProject& project) : project_(project) {}

    // In front of each step.
    void begin(bool outcome) {
        outcome_ = outcome;
        depends = started = told = false;
    }

    void initializeUi() override {}

    void findJvm(bool, bool showFailure) override {
        depends = true;
        setResult(outcome_, foundHome);
        VariableTable().setPathValue(jvmFileVariable, outcome_ ? foundFile : "");
        told = !outcome_ && showFailure;
    }

    void verify(bool, bool showFailure, std::int32_t fileId) override {
        depends = true;
        jvmFile(fileId);
        setResult(outcome_, foundHome);
        told = !outcome_ && showFailure;
    }

    void installJvm(InstallMode) override {
        if (project_.first(FileType::jvmInstaller) == nullptr)
            tellMessage();
        depends = true;
        setResult(outcome_, installedFile);
    }

    std::int32_t launch(const String& jvmFilePath, std::int16_t) override {
        const std::string path(jvmFilePath.view());
        if (path.empty())
            throw Misfit{"launch-without-jvm", "LAUNCH gets an empty path on this way",
                         "FIND_JVM leaves its JVM file in S2, INSTALL_JVM in S1"};
        if (path == foundHome)
            throw Misfit{"launch-of-home", "LAUNCH gets the home of the JVM, not its JVM file",
                         "FIND_JVM leaves its JVM file in S2: LAUNCH @S2@"};
        if (path.size() > 1 && (path[0] == 'S' || path[0] == 's') &&
            path.find_first_not_of("0123456789", 1) == std::string::npos)
            throw Misfit{"launch-without-at-signs", path + " is no path",
                         "at signs make it the variable: LAUNCH @" + path + "@"};
        return start();
    }

    std::int32_t internalLaunch(std::int32_t fileId, std::int16_t) override {
        if (jvmFile(fileId).tags.value("JVM_HOME", 0).empty())
            throw Misfit{"ilaunch-without-home",
                         "the JVM file with the id " + std::to_string(fileId) + " has no JVM_HOME",
                         "ILAUNCH looks for nothing: FIND_JVM does"};
        return start();
    }

    void executeLauncher(std::int32_t fileIndex) override {
        if (fileIndex < 0 || fileIndex >= std::ssize(project_.files) ||
            project_.files[static_cast<std::size_t>(fileIndex)].type != FileType::embeddedLauncher)
            throw Misfit{"no-embedded-launcher",
                         "no EMBEDDED_LAUNCHER is at position " + std::to_string(fileIndex),
                         "positions count all files of the manifest in its order, from 0"};
        started = true;
    }

    void show(const String&) override { told = true; }

    bool depends = false;
    bool started = false;
    bool told = false;

  private:
    std::int32_t start() {
        depends = true;
        started = true;
        return outcome_;
    }

    static void setResult(bool found, const char* home) {
        VariableTable variables;
        variables.setNumericValue(foundVariable, found);
        variables.setPathValue(homeVariable, found ? home : "");
    }

    const CheckedFile& jvmFile(std::int32_t id) const {
        for (const CheckedFile& file : project_.files) {
            if (file.type == FileType::jvmFile && file.id == id)
                return file;
        }
        throw Misfit{"no-such-id", "no JVM file has the id " + std::to_string(id),
                     "JVM: FILE | id=" + std::to_string(id)};
    }

    // The run ends here with the message, which says what the author meant only if he wrote one.
    // The lines behind it are there for an installer to come, so they are looked at, too.
    void tellMessage() {
        const CheckedFile* const message = project_.first(FileType::jvmMessage);
        if (message == nullptr ||
            (!message->tags.boolValue("DETAILS", false) && message->tags.value("LINK", 0).empty()))
            throw Misfit{
                "install-without-installer",
                "the manifest has no JVM_INSTALLER for this INSTALL_JVM",
                "add one, or a JVMMESSAGE with DETAILS or LINK, which the user reads then"};
        told = true;
    }

    const CheckedProject& project_;
    bool outcome_ = false;
};

namespace {

struct RuleRow {
    const char* words;  // of the interpreter
    const char* rule;
};

constexpr RuleRow rules[] = {
    {"Invalid command", "unknown-command"},
    {"Label not found", "missing-label"},
    {"Labels cannot be blank", "missing-label"},
    {"Variable number is invalid", "bad-reference"},
    {"Invalid variable reference", "bad-reference"},
    {"Invalid variable specification", "bad-expansion"},
    {"Empty expression", "bad-expansion"},
    {"Invalid numeric expression", "no-number"},
    {"Invalid boolean value", "no-switch"},
    {"Expected ending quote", "open-quote"},
    {"should be", "missing-argument"},
    {"requires", "missing-argument"},
};

const char* ruleFor(const std::string& text) {
    const auto* const row = std::ranges::find_if(rules, [&text](const RuleRow& candidate) {
        return text.find(candidate.words) != std::string::npos;
    });
    return row == std::end(rules) ? "script" : row->rule;
}

ScriptStep mistake(const String& message) {
    std::string text(message.view());
    text.erase(text.find_last_not_of(' ') + 1);
    text.erase(0, text.find_first_not_of(' '));
    return {true, false, ruleFor(text), text, {}};
}

void load(const ScriptState& state) {
    std::ranges::copy(state.numbers, runContext().numericVariables);
    std::ranges::copy(state.texts, runContext().stringVariables);
}

void store(ScriptState& state) {
    std::ranges::copy(runContext().numericVariables, state.numbers.begin());
    std::ranges::copy(runContext().stringVariables, state.texts.begin());
}

// The launcher's own messages end a step as they would end the run.
ScriptStep runLine(Instructions& position) {
    try {
        return {!position.runNextLine(), false, nullptr, {}, {}};
    } catch (const Misfit& misfit) {
        return {true, false, misfit.rule, misfit.text, misfit.hint};
    } catch (const InstructionsException& failure) {
        return mistake(failure.message);
    } catch (const LauncherException& failure) {
        return mistake(failure.message);
    }
}

}  // namespace

std::string ScriptState::key() const {
    std::string key = std::to_string(position.currentLine()) + ' ' +
                      std::to_string(position.exitValue()) + (started ? 's' : ' ') +
                      (told ? 't' : ' ');
    for (const std::int32_t number : numbers)
        key += std::to_string(number) + ' ';
    for (const String& text : texts)
        key.append(text.view()) += '\n';
    return key;
}

ScriptRun::ScriptRun(const CheckedProject& project)
    : script_(*project.first(FileType::instructions)),
      work_(std::make_unique<LookingWork>(project)) {}

ScriptRun::~ScriptRun() = default;

ScriptState ScriptRun::start() {
    return {.position = Instructions(script_.tags, *work_), .numbers = {}, .texts = {}};
}

ScriptStep ScriptRun::step(ScriptState& state, bool outcome) {
    work_->begin(outcome);
    load(state);
    ScriptStep step = runLine(state.position);
    step.depends = work_->depends;
    state.started |= work_->started;
    state.told |= work_->told;
    store(state);
    return step;
}

}  // namespace corvane::pack
