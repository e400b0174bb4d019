// What is found wrong with an author's files, and how it is told.
#include "packer/base/Findings.h"

#include <algorithm>
#include <fstream>
#include <numeric>
#include <ostream>

#include "packer/base/Json.h"

namespace corvane::pack {

namespace {

constexpr const char* severityName(Severity severity) {
    return severity == Severity::error ? "error" : "warning";
}

std::string readLine(const Place& place) {
    std::ifstream stream(place.file, std::ios::binary);
    std::string line;
    for (int number = 0; number < place.line && std::getline(stream, line);)
        ++number;
    if (line.ends_with('\r'))
        line.pop_back();
    return stream ? line : std::string();
}

// The author's line and a caret below its column; tabs stay tabs, so that both lines agree.
void printLine(const Place& place, std::ostream& out) {
    const std::string line = readLine(place);
    if (line.empty())
        return;
    out << "    " << line << '\n';
    if (place.column == 0)
        return;
    std::string blanks;
    for (std::size_t i = 0; i + 1 < static_cast<std::size_t>(place.column) && i < line.size();
         ++i) {
        const bool continuesCharacter = (static_cast<unsigned char>(line[i]) & 0xC0) == 0x80;
        if (!continuesCharacter)
            blanks += line[i] == '\t' ? '\t' : ' ';
    }
    out << "    " << blanks << "^\n";
}

void printFinding(const Finding& finding, std::ostream& out) {
    out << finding.place.file.string() << ':';
    if (finding.place.line > 0)
        out << finding.place.line << ':';
    if (finding.place.column > 0)
        out << finding.place.column << ':';
    out << ' ' << severityName(finding.severity) << ": " << finding.text << '\n';
    if (finding.place.line > 0)
        printLine(finding.place, out);
    if (!finding.hint.empty())
        out << "    " << finding.hint << '\n';
}

// The number of single characters to insert, remove or replace.
std::size_t distance(const std::string& from, const std::string& to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (from[i] != to[j]);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

}  // namespace

void Findings::error(const char* rule, const Place& place, std::string text, std::string hint) {
    findings_.push_back({Severity::error, rule, place, std::move(text), std::move(hint)});
}

void Findings::warning(const char* rule, const Place& place, std::string text, std::string hint) {
    findings_.push_back({Severity::warning, rule, place, std::move(text), std::move(hint)});
}

bool Findings::hasErrors() const {
    return std::any_of(findings_.begin(), findings_.end(),
                       [](const Finding& finding) { return finding.severity == Severity::error; });
}

void Findings::print(std::ostream& out) const {
    for (const Finding& finding : findings_)
        printFinding(finding, out);
}

void Findings::printJson(std::ostream& out) const {
    const char* separator = "[";
    for (const Finding& finding : findings_) {
        out << separator << "\n  {\"severity\": " << json(severityName(finding.severity))
            << ", \"rule\": " << json(finding.rule)
            << ", \"file\": " << json(finding.place.file.string())
            << ", \"line\": " << finding.place.line << ", \"column\": " << finding.place.column
            << ", \"text\": " << json(finding.text) << ", \"hint\": " << json(finding.hint) << '}';
        separator = ",";
    }
    out << (findings_.empty() ? "[]\n" : "\n]\n");
}

std::string didYouMean(const std::string& word, const std::vector<std::string>& names) {
    const auto nearest = std::min_element(names.begin(), names.end(),
                                          [&](const std::string& left, const std::string& right) {
                                              return distance(word, left) < distance(word, right);
                                          });
    const bool near = nearest != names.end() && distance(word, *nearest) <= 1 + word.size() / 4;
    return near ? "did you mean " + *nearest + "?" : std::string();
}

}  // namespace corvane::pack
