// What became of a candidate, and how the report and the action DESCRIBE_ALL tell it.
#pragma once

#include "base/Report.h"
#include "base/RunContext.h"
#include "foundation/String.h"
#include "jvmfile/JvmFile.h"
#include "jvmfile/JvmProperty.h"

namespace corvane {

struct Finding {
    const char* result = "refused";  // as the report has it (docs/report.md)
    Refusal refusal;                 // of a refused one
    String reason;                   // why there is no report of a candidate's to compare
};

// Where the candidates come from that are tried while it lives: a tag or an option, and its value.
class CandidateOrigin {
  public:
    explicit CandidateOrigin(const char* from, const String& hint = {});
    CandidateOrigin(const CandidateOrigin&) = delete;
    CandidateOrigin& operator=(const CandidateOrigin&) = delete;
    ~CandidateOrigin();

  private:
    friend struct Candidate candidateNow(const String& home);

    const char* const from_;
    const String hint_;
    const CandidateOrigin* const outer_;
};

// A home with a Java executable of one of the JVM files, and where it came from.
struct Candidate {
    String home;
    String from;
    String hint;
};

class CandidateList : public ListOf<Candidate> {};

// The candidate with the origin that lives now.
Candidate candidateNow(const String& home);

// Adds it to the list, unless that holds the home already.
void gather(const String& home, CandidateList& candidates);

// The object `candidate`.
ReportObject candidateObject(const Candidate& candidate, const JvmFile& jvmFile,
                             const Finding& finding);

// Adds to an object what the class reported of each property, in the field `properties`.
void addProperties(ReportObject& object, const String& output, const JvmPropertyList& properties);

}  // namespace corvane
