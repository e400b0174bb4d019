// Candidates that are asked within a time limit, and the memory of what they said.
#pragma once

#include <cstdint>

#include "foundation/ObjectArray.h"
#include "foundation/String.h"
#include "jvmfile/JvmFile.h"
#include "process/LimitedRun.h"

namespace corvane {

// What a candidate said, or how it came to say nothing.
struct Answer {
    String commandLine;
    String start;  // the candidate and what it is started with, whatever it is asked
    LimitedRun::End end = LimitedRun::End::byItself;
    String output;
    String reason;        // why it isn't usable, in words for the log
    bool usable = false;  // it ended in time, and a report is in the output
};

// The answers of a run.
class AnswerList : public ListOf<Answer> {};

// The limit that a JVM file's VERIFY_SECONDS sets for each of its candidates; 0 for none.
std::uint32_t verifySeconds(const JvmFile& jvmFile);

// Position behind the line with which the class's report begins; `npos` without one, and then
// `line` is the last line.
std::size_t findReport(const String& output, String& line);

// A question to a candidate: a command that runs the class, the directory in which it runs (empty:
// the launcher's), and how many seconds it may take (0: any number).
struct Question {
    String command;
    String directory;
    std::uint32_t limit = 0;
};

// Asks the candidate in the JVM file's JVM_HOME, unless the list already holds the answer to that
// command line, or shows that this candidate has none for anybody. Whatever keeps the candidate
// from answering is logged. Raises `LauncherException` for a bad template.
const Answer& askHome(const Question& question, JvmFile& jvmFile, AnswerList& answers);

}  // namespace corvane
