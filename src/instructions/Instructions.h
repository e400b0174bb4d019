// `Instructions`: the interpreter of the script that says what a run does
// (docs/instruction-language.md).
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/String.h"
#include "instructions/CommandWork.h"
#include "launcherfile/TagFile.h"

namespace corvane {

// Runs once through the values of the tag INSTRUCTIONS, with jumps. Points to these, which must
// stay as they are, and to what does the commands' work, the launcher's own unless another is
// given. A copy is where the run stands. Failures are `InstructionsException`s with the current
// line's number, or, from the commands' work, `LauncherException`s.
class Instructions {
  public:
    explicit Instructions(const TagFile& tags, CommandWork& work = launcherWork())
        : lines_(&tags.values("INSTRUCTIONS")), work_(&work) {}

    // Gives the value of EXIT or the result of the last LAUNCH or ILAUNCH, 0 if there was none.
    std::int32_t run();

    // Carries out the current line, the first one at the beginning. False when there is none left.
    bool runNextLine();
    std::int32_t currentLine() const noexcept { return currentLine_; }
    std::int32_t exitValue() const noexcept { return exitValue_; }
    // What stands behind the words that the latest command has read.
    const String& surplus() const noexcept { return surplus_; }
    // The name of the command at `index` of their table; null behind the last one.
    static const char* commandName(std::size_t index);

    // Index of the line that holds `label` (without its colon; may hold references).
    std::int32_t findLabel(const String& label);

    // Replaces the variable references in `text`, also those that come in with a value, and
    // @EXIT_VALUE@ by the exit value of the last child. An
    // expansion that has no end raises like any bad reference. `context` opens every message.
    void expand(String& text, const char* context);

    // The expanded expression as a number; bool takes 0 and 1 only.
    std::int32_t evaluateInteger(const String& expression, const char* context);
    std::int16_t evaluateShort(const String& expression, const char* context);
    bool evaluateBool(const String& expression, const char* context);

    // The next argument of `line` from `pos`, which may be quoted, expanded. It must be followed by
    // a further one.
    void parseStringArgument(const String& line, std::size_t& pos, String& argument,
                             const char* context);

  private:
    struct Command;
    static const Command commands[];

    // A line while its arguments are cut.
    struct Line {
        String text;
        std::size_t pos = 0;
    };

    void runLine(Line line);
    [[noreturn]] void fail(const String& message) const;
    // The next argument of a command; `missing` is the failure's text when there is none.
    String requiredToken(Line& line, const char* missing);
    std::int32_t requiredInteger(Line& line, const char* missing);
    std::int16_t requiredShort(Line& line, const char* missing);
    bool requiredBool(Line& line, const char* missing);
    // Leaves marks in the place of what a path holds, so that a variable can keep them.
    void expandMarked(String& text, const char* context);
    void replaceReferences(String& text, const char* context, bool& replaced);
    String referenceText(const String& name, const char* context) const;
    static String restOf(const Line& line);
    static String takeRest(Line& line);
    String expandedValue(const String& text, const char* context);
    void jump(const String& label);

    void findJvm(Line& line);
    void verify(Line& line);
    void goTo(Line& line);
    void jumpIfZero(Line& line);
    void set(Line& line);
    void initializeUi(Line& line);
    void installJvm(Line& line);
    void launch(Line& line);
    void internalLaunch(Line& line);
    void executeLauncher(Line& line);
    void exit(Line& line);
    void show(Line& line);

    const StringList* lines_;  // not owned
    CommandWork* work_;        // not owned
    std::int32_t currentLine_ = 0;
    std::int32_t exitValue_ = 0;
    String surplus_;
    // The lines of labels that were found, at their hashes, so that a loop doesn't search for its
    // own again and again. The script doesn't change meanwhile.
    std::int32_t foundLabels_[64] = {};
};

// Runs the launcher's script: -1 if it has none. A failure in the script is raised as a
// `LauncherException` that tells its line.
std::int32_t runInstructions();

}  // namespace corvane
