// The objects of the candidates.
#include "jvmsearch/Finding.h"

#include "foundation/TextLines.h"
#include "host/Paths.h"
#include "jvmsearch/Asking.h"

namespace corvane {

namespace {

const CandidateOrigin* innermost = nullptr;

}  // namespace

CandidateOrigin::CandidateOrigin(const char* from, const String& hint)
    : from_(from), hint_(hint), outer_(innermost) {
    innermost = this;
}

CandidateOrigin::~CandidateOrigin() {
    innermost = outer_;
}

Candidate candidateNow(const String& home) {
    return innermost == nullptr ? Candidate{home, {}, {}}
                                : Candidate{home, innermost->from_, innermost->hint_};
}

void gather(const String& home, CandidateList& candidates) {
    for (const Candidate& known : candidates) {
        if (samePath(known.home.view(), home.view()))
            return;
    }
    candidates.add(std::make_unique<Candidate>(candidateNow(home)));
}

ReportObject candidateObject(const Candidate& candidate, const JvmFile& jvmFile,
                             const Finding& finding) {
    ReportObject object("candidate");
    object.add("home", candidate.home);
    if (!candidate.from.empty())
        object.add("from", candidate.from);
    if (!candidate.hint.empty())
        object.add("hint", candidate.hint);
    object.add("jvmFile", jvmFile.tag("DESC")).add("result", finding.result);
    if (!finding.refusal.property.empty())
        object.add("property", finding.refusal.property)
            .add("wanted", finding.refusal.wanted)
            .add("reported", finding.refusal.found);
    if (!finding.reason.empty())
        object.add("reason", finding.reason);
    return object;
}

void addProperties(ReportObject& object, const String& output, const JvmPropertyList& properties) {
    String line;
    std::size_t pos = findReport(output, line);
    object.open("properties");
    for (const JvmProperty& property : properties) {
        if (pos >= output.length())
            break;
        line.erase();
        readLine(output, pos, line);
        object.addIn(property.name, line);
    }
    object.close();
}

}  // namespace corvane
